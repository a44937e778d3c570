#pragma once

#include "support/DatabaseTestCase.h"

class TestLedgerStatistics final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void entriesAddUp();
    void sumsStopAtTheLimits();
    void theLastLineOfACategoryReportAddsUp();
    void accountsAddUpToAll();
    void missingMonthsAreZero();
    void twelveMonthsEndWithToday_data();
    void twelveMonthsEndWithToday();
    void sharesAddUpToAHundred_data();
    void sharesAddUpToAHundred();
    void randomSharesAddUpAndStayClose();
    void changesAreNamed_data();
    void changesAreNamed();
    void rangesAreReadAndCompared();
    void openRangesHaveNoComparison();
    void monthsAreReadWithGaps();
    void theOwnersBalanceIsReadByRange();
    void cardsCountLevelsInForceAndLooseVouchers();
    void aFailedReadIsNotZero_data();
    void aFailedReadIsNotZero();
};
