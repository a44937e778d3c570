#pragma once

#include "support/TestCase.h"

class TestMoney final : public TestCase {
    Q_OBJECT

private slots:
    void amountsHaveOneText_data();
    void amountsHaveOneText();
    void capitalNumeralsFollowAccountingPractice_data();
    void capitalNumeralsFollowAccountingPractice();
    void capitalNumeralsReadBackAsTheAmount();
    void yuanRoundHalvesAwayFromZero_data();
    void yuanRoundHalvesAwayFromZero();
    void codesAndLabelsStandInTableOrder_data();
    void codesAndLabelsStandInTableOrder();
    void unknownCodesFallBack();
    void charactersCountOnceEach_data();
    void charactersCountOnceEach();
    void datesAreStoredInOneForm_data();
    void datesAreStoredInOneForm();
};
