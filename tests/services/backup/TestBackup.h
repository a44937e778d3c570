#pragma once

#include "support/DatabaseTestCase.h"

class TestBackup final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aBackupHoldsEverything();
    void theManifestReadsAsWritten();
    void theManifestIsReadFromOtherHands_data();
    void theManifestIsReadFromOtherHands();
    void copiesCanBeWritten();
    void linksToFoldersAreNotFollowed();
    void aBrokenLinkStopsTheBackup();
    void pipesAreLeftOut();
    void aVoucherFolderOnAnotherDiskIsCopied();
    void withoutAVoucherFolderTheCopyIsEmpty();
    void theFolderMayHaveAnyName();
    void twoBackupsInOneSecondAreTwo();
    void takenNamesEndTheSearch();
    void aFolderThatCannotBeCreatedIsTold();
    void unusableTargetsAreRefused_data();
    void unusableTargetsAreRefused();
    void failuresLeaveNothingBehind_data();
    void failuresLeaveNothingBehind();
    void aFullDiskLeavesNothingBehind();
    void aTimeThatCannotBeNotedDoesNotUndoTheBackup();
    void aPathIsTakenAsTheSystemTakesIt();
    void theProgressCountsEveryFile();
    void foldersAreCopiedOverOthers();
    void whatIsInTheWayIsTold_data();
    void whatIsInTheWayIsTold();
};
