#pragma once

#include "support/TestCase.h"

/// Backups and restores that end in the middle, at each of their system calls.
class TestInterruption final : public TestCase {
    Q_OBJECT

private slots:
    void aKilledRestoreLeavesTheOldOrTheNew();
    void aRestoreKilledByChanceLeavesTheOldOrTheNew();
    void aKilledRepairIsRepaired();
    void aFailedRestoreLeavesTheOldAndSaysWhy();
    void aDiskThatBreaksLeavesTheOldOrTheNew();
    void aKilledBackupIsWholeOrNone();
    void aFailedBackupLeavesNothing();
};
