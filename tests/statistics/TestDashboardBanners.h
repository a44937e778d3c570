#pragma once

#include "support/TestCase.h"

class TestDashboardBanners final : public TestCase {
    Q_OBJECT

private slots:
    void allIsWell();
    void namesAreRequired_data();
    void namesAreRequired();
    void backupsGrowOld_data();
    void backupsGrowOld();
    void theGravestComesFirst();
};
