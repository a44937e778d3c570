#pragma once

#include "support/TestCase.h"

class TestContrast final : public TestCase {
    Q_OBJECT

private slots:
    void ratioSpansOneToTwentyOne();
    void placeholdersAreAllFilled_data();
    void placeholdersAreAllFilled();
    void ruleWithTextAndGroundIsReadable_data();
    void ruleWithTextAndGroundIsReadable();
    void textWithoutGroundIsReadableOnEverySurface_data();
    void textWithoutGroundIsReadableOnEverySurface();
    void paintedPairIsReadable_data();
    void paintedPairIsReadable();
    void toastIconStandsOut_data();
    void toastIconStandsOut();
    void controlImagesUseTokensOfTheirMode_data();
    void controlImagesUseTokensOfTheirMode();
};
