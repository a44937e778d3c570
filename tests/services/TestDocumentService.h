#pragma once

#include "support/DatabaseTestCase.h"

class TestDocumentService final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init();
    void anAnnualDecisionIsStoredWithItsPdf();
    void aFundDecisionCoversItsEntries();
    void anIndependenceStatementIsStored();
    void anIncompleteProfileIsRefused_data();
    void anIncompleteProfileIsRefused();
    void inputIsCheckedBeforeTheProfile();
    void entriesMustExist();
    void entriesMustGoTheChosenWay();
    void sumsBeyondAnyAmountAreRefused();
    void nothingIsWrittenByAPreview();
    void thePreviewIsWhatWillBeStored();
    void numbersRunPerKindAndYear();
    void aDecisionLiftsTheFrequentTransferFlag();
    void documentsWithoutEntriesEvaluateNothing();
    void regeneratingTakesTheNewProfile();
    void regeneratingReadsTheEntriesAgain();
    void regeneratingNeedsItsEntries();
    void missingDocumentsAreReported();
    void aReadThatFailsIsNotTakenForAMissingDocument();
    void deletingRemovesEverything();
};
