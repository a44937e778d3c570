#pragma once

#include "support/TestCase.h"

class TestFields final : public TestCase {
    Q_OBJECT

private slots:
    void everyRowNamesItsField_data();
    void everyRowNamesItsField();
    void wrappedFieldIsNamedAndNotItsWrapper();
    void markupInALabelIsShownAsTyped();
    void starFollowsRequired();
    void hintStandsBelowTheField();
    void tabLeavesATextArea();
    void amountIsUnderstoodAsTyped_data();
    void amountIsUnderstoodAsTyped();
    void amountRoundTrips_data();
    void amountRoundTrips();
    void amountRefusesAThirdDecimal();
    void focusSelectsTheAmount();
    void wheelChangesNoUnfocusedField();
    void wheelChangesAFocusedField();
    void applicationGuardCoversEveryField();
    void switchTogglesByKeyboardMouseAndAssistiveTechnology();
    void switchTellsItsState();
    void buttonRoleDecidesLookAndDefault();
};
