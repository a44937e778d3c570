#pragma once

#include "support/DatabaseTestCase.h"

class TestRiskService final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void anUnsavedEntryIsJudgedByTheStoredThreshold();
    void theWholeLedgerIsJudged();
    void oneVoucherExplainsALargeAmount();
    void onlyAFundDecisionOverEveryRowClearsACluster();
    void otherDocumentsCoverNothing();
    void anOverrideStaysInForce();
    void storedThresholdsDecide();
    void senselessThresholdsGiveWay();
    void brokenDatesBelongToNoGroup();
    void randomLedgersAgreeWithAPlainReading();
    void aRowThatCannotBeWrittenEndsTheRun_data();
    void aRowThatCannotBeWrittenEndsTheRun();
    void whatSurroundsItDecidesWhetherItStays_data();
    void whatSurroundsItDecidesWhetherItStays();
    void aLostTransactionIsRemarked();
    void rowsThatCannotBeReadLeaveNothingToDo();
    void withoutDatabaseNothingHappens();
    void theSummaryCountsRowsAndFlags();
};
