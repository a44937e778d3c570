#pragma once

#include "support/TestCase.h"

class TestDocumentPdf final : public TestCase {
    Q_OBJECT

private slots:
    void theTextLayerIsTheComposedText_data();
    void theTextLayerIsTheComposedText();
    void everyCommonCharacterIsReadBack_data();
    void everyCommonCharacterIsReadBack();
    void fontsAreEmbedded();
    void theFileNamesItself();
    void everySheetIsA4WithItsFooter_data();
    void everySheetIsA4WithItsFooter();
    void nothingLeavesItsPlace_data();
    void nothingLeavesItsPlace();
    void theDateLineKeepsItsBlanks();
    void tableRowsAreNotTornApart();
    void everyPartOfTheTableIsClosedByLines();
    void theSignatureNeverStandsAlone();
    void requestedPageBreaksAreKept();
    void aDarkThemeStillPrintsBlack();
    void missingFoldersAreCreated();
    void aFailureKeepsTheOldFile_data();
    void aFailureKeepsTheOldFile();
    void aFullDiskKeepsTheOldFile();
    void theFontHasItsSubstitutes();
};
