#pragma once

#include "support/DatabaseTestCase.h"

class TestVoucherImport final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aFileIsArchivedWithItsDescription();
    void theCopyIsTheFile_data();
    void theCopyIsTheFile();
    void theNameDefaultsToTheFilesOwn_data();
    void theNameDefaultsToTheFilesOwn();
    void refusedFilesLeaveNothing_data();
    void refusedFilesLeaveNothing();
    void aFileThatCannotBeReadLeavesNothing();
    void theSameContentIsADuplicateAndStored();
    void linksSettleTheRisksOfTheirEntries();
    void theLedgerIsEvaluatedOncePerLinkedEntry();
    void whatFailsLeavesNeitherRowNorCopy_data();
    void whatFailsLeavesNeitherRowNorCopy();
    void aDuplicateIsKnownAlthoughTheImportFails();
    void aFullDiskLeavesNothing();
    void aFileInTheFoldersPlaceLeavesNothing();
    void aMissingFolderIsMadeAnew();
    void aFailedEvaluationKeepsTheVoucher();
    void anEvaluationThatLosesTheTransactionLosesTheCopyToo();
    void anOuterTransactionDecidesTogether();
    void digestsAreThoseOfTheStandard_data();
    void digestsAreThoseOfTheStandard();
    void aDigestNeedsAReadableFile();
    void sizesAreReadable_data();
    void sizesAreReadable();
    void theDialogOffersTheAcceptedTypes();
};
