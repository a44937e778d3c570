#pragma once

#include "support/DatabaseTestCase.h"

class TestLedgerFiguresDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void accountsAddUp_data();
    void accountsAddUp();
    void monthsAddUp();
    void theOwnersBalanceCountsTransfersOnly_data();
    void theOwnersBalanceCountsTransfersOnly();
    void fundDecisionsAddUp();
    void largeEntriesWithoutVoucherAreFound();
    void entriesAreCounted();
    void failuresLeaveNothingAndAReason();
};
