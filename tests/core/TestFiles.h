#pragma once

#include "support/TestCase.h"

class TestFiles final : public TestCase {
    Q_OBJECT

private slots:
    void everyFolderIsCreated();
    void aFileInAFoldersPlaceIsAFailure();
    void storedPathsCountFromTheDataDirectory_data();
    void storedPathsCountFromTheDataDirectory();
    void storedPathsResolve();
    void safeWriteReplacesTheWholeFile();
    void safeWriteFailsWithoutTouchingTheTarget();
    void aFullDiskKeepsTheOldFile();
    void aLivingHolderKeepsOthersOut();
    void aStaleLockNeverKeepsTheOwnerOut_data();
    void aStaleLockNeverKeepsTheOwnerOut();
    void aLockThatCannotBeWrittenIsNotTakenForAnotherStart();
};
