#pragma once

#include "support/TestCase.h"

class TestRiskRules final : public TestCase {
    Q_OBJECT

private slots:
    void businessThroughThePrivateAccountIsHigh_data();
    void businessThroughThePrivateAccountIsHigh();
    void largeAmountsNeedAnExplanation_data();
    void largeAmountsNeedAnExplanation();
    void thresholdsAreNamedInYuan_data();
    void thresholdsAreNamedInYuan();
    void frequentTransfersNameWindowAndSize();
    void everyRuleThatFiresIsNamedUnderTheGravestLevel();
    void thresholdsThatMakeNoSenseGiveWay_data();
    void thresholdsThatMakeNoSenseGiveWay();
    void groupsSpanTheWindow_data();
    void groupsSpanTheWindow();
    void groupsAgreeWithCountingThemOneByOne();
};
