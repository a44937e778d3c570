#pragma once

#include "support/TestCase.h"

class TestRiskPreview final : public TestCase {
    Q_OBJECT

private slots:
    void theLevelChoosesBannerAndHeading_data();
    void theLevelChoosesBannerAndHeading();
    void transfersAreToldOfTheFullEvaluation_data();
    void transfersAreToldOfTheFullEvaluation();
    void remarksFollowEachOther();
};
