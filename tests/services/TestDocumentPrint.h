#pragma once

#include "support/TestCase.h"

class TestDocumentPrint final : public TestCase {
    Q_OBJECT

private slots:
    void aPrintedSheetLooksLikeThePdf_data();
    void aPrintedSheetLooksLikeThePdf();
    void thePrinterGetsThePageOfDocuments();
    void chosenPagesOnly();
    void lastPageFirst();
    void aPrinterThatTakesNoJobIsAFailure();
    void decliningPrintsNothing();
    void sheetsAreCutAtGaps_data();
    void sheetsAreCutAtGaps();
    void tallPiecesAreCutThrough();
};
