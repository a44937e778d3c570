#pragma once

#include "support/DatabaseTestCase.h"

class TestProfileDialogs final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void storesEveryField();
    void missingNamesAreRefused_data();
    void missingNamesAreRefused();
    void aWrongCreditCodeWarnsAndIsStored();
    void aFailedSaveKeepsTheInput();
    void changedInputIsThrownAwayOnlyAfterAQuestion();
    void tabReachesTheFieldsByTheirLabelsInOrder();
    void theWizardStoresCompanyAndThresholds();
    void theWizardKeepsItsInputBetweenSteps();
    void theDisclaimerHasToBeReadToTheEnd();
    void theDisclaimerCanBeReadAgain();
};
