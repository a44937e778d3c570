#pragma once

#include "support/DatabaseTestCase.h"

/// Row and PDF of a document come and go together, whatever fails.
class TestDocumentFiles final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init();
    void failedGenerationLeavesNothing_data();
    void failedGenerationLeavesNothing();
    void failedRegenerationKeepsTheOldPdf_data();
    void failedRegenerationKeepsTheOldPdf();
    void failedDeletionKeepsEverything_data();
    void failedDeletionKeepsEverything();
    void aClosedDatabaseIsReported();
    void aTransactionThatCannotBeginIsReported();
    void aFileWithoutARowIsPutAside();
    void aFailureBringsTheFileWithoutARowBack();
    void anotherDocumentsFileIsPutAsideOnRegenerating_data();
    void anotherDocumentsFileIsPutAsideOnRegenerating();
    void aSignedCopyOutlivesItsDocument();
    void filesOfOtherRowsAreNeverTouched();
    void aFolderAtThePlaceOfThePdfIsLeftAlone();
    void leftoversOfACrashAreReportedAndLeftAlone();
    void anInterruptedRegenerationIsUndone_data();
    void anInterruptedRegenerationIsUndone();
    void aMissingExportsFolderIsMade();
    void theOwnFileComesFirst();
    void aCopyNeverTouchesTheOriginal();
    void pathsOfOtherSystemsAreUnderstood_data();
    void pathsOfOtherSystemsAreUnderstood();
    void aMissingPdfIsWrittenAgain();
    void filesWithoutRowsAreReported();
};
