#pragma once

#include "support/TestCase.h"

class TestTodoList final : public TestCase {
    Q_OBJECT

private slots:
    void aCleanLedgerAsksForNothing();
    void highRiskEntriesOpenTheLedger();
    void uncoveredTransfersAskForADecision_data();
    void uncoveredTransfersAskForADecision();
    void aReviewedTransferIsNotAskedForAgain();
    void lastYearsDecisionIsMissing_data();
    void lastYearsDecisionIsMissing();
    void statementsAgeInAYear_data();
    void statementsAgeInAYear();
    void overdueDecisionsAreRemarked_data();
    void overdueDecisionsAreRemarked();
    void whatCountsAsReturned_data();
    void whatCountsAsReturned();
    void everyTransferSettlesOneDecisionOnly_data();
    void everyTransferSettlesOneDecisionOnly();
    void theYearEndItemComesInNovember_data();
    void theYearEndItemComesInNovember();
    void looseVouchersOpenTheArchive();
    void largeEntriesOpenTheLedger();
    void noThresholdMakesNoLargeEntries_data();
    void noThresholdMakesNoLargeEntries();
    void theGravestComesFirst();
};
