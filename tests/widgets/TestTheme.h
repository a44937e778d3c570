#pragma once

#include "support/TestCase.h"

class TestTheme final : public TestCase {
    Q_OBJECT

private slots:
    void init();
    void storedCodeNamesTheMode();
    void tokensAreFoundByTheirNames();
    void unknownPlaceholderHasNoToken();
    void paletteFollowsTheMode_data();
    void paletteFollowsTheMode();
    void switchingRepaintsAndRecolours();
    void switchingRecoloursLinksInLabels();
    void drawingsAndNamesAgree();
    void everyIconIsDrawn_data();
    void everyIconIsDrawn();
    void iconFollowsThemeAndDisabledState();
    void unknownIconIsReported();
    void logoIsDrawnAtEverySize_data();
    void logoIsDrawnAtEverySize();
};
