#pragma once

#include "support/TestCase.h"

class TestPeriod final : public TestCase {
    Q_OBJECT

private slots:
    void periodsAreWholeCalendarUnits_data();
    void periodsAreWholeCalendarUnits();
    void periodsHaveLabels();
    void rangesAreComparedFairly_data();
    void rangesAreComparedFairly();
    void openRangesAreNotCompared_data();
    void openRangesAreNotCompared();
};
