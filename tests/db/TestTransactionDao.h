#pragma once

#include "support/DatabaseTestCase.h"

class TestTransactionDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void everyFieldIsStored();
    void everyFieldIsUpdated();
    void emptyPartsAreStoredAsNull();
    void aMissingRowIsAbsent();
    void badEntriesAreRefusedAndLogged();
    void filtersRestrictTheSearch_data();
    void filtersRestrictTheSearch();
    void searchesBringProjectAndVouchers();
    void ownerFlowsComeOldestFirst();
    void theEvaluationReadsWhatItLooksAt();
    void projectsAddUp();
    void categoriesAddUp_data();
    void categoriesAddUp();
    void riskLevelsAreCounted();
    void theAutomaticLevelIsStored_data();
    void theAutomaticLevelIsStored();
    void manyLevelsAreStoredAtOnce();
    void manyLevelsStopAtTheFirstFailure();
    void anOverrideReplacesTheAutomaticLevel();
    void aReleasedOverrideGivesTheAutomaticLevelBack();
    void reasonsAreReadFromAnyJson_data();
    void reasonsAreReadFromAnyJson();
    void aBrokenStatementKeepsItsReason();
};
