#pragma once

#include "support/DatabaseTestCase.h"

class TestProjectDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void everyProjectFieldIsStoredAndUpdated();
    void unsetProjectPartsAreStoredAsNull();
    void projectsComeByStatusThenLastChange();
    void keywordsFindNameAndClient_data();
    void keywordsFindNameAndClient();
    void everyContractFieldIsStoredAndUpdated();
    void contractsComeSignedLastFirst();
    void codesContinueTheHighestOfTheYear_data();
    void codesContinueTheHighestOfTheYear();
    void blankCodesAreGivenWhenStored();
    void aTakenCodeIsRefused();
    void projectsWithEntriesAreKept();
    void projectsWhoseEntriesCannotBeCountedAreKept();
    void projectsWithoutEntriesGoWithTheirContracts();
};
