#pragma once

#include "support/TestCase.h"

class TestRestoreRepair final : public TestCase {
    Q_OBJECT

private slots:
    void everyStateIsRepaired_data();
    void everyStateIsRepaired();
    void whatIsNotOursStaysAndStopsTheStart_data();
    void whatIsNotOursStaysAndStopsTheStart();
    void whatMayBeTheOnlyCopyStopsTheStart_data();
    void whatMayBeTheOnlyCopyStopsTheStart();
};
