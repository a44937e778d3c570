#pragma once

#include "support/DatabaseTestCase.h"

class TestDocumentDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void everyFieldIsStored();
    void unsetPartsAreStoredAsNull();
    void documentsComeNewestFirst_data();
    void documentsComeNewestFirst();
    void onlyAnnualDecisionsCountForTheYear();
    void numbersFollowTheHighestOfKindAndYear_data();
    void numbersFollowTheHighestOfKindAndYear();
    void aFreedNumberIsUsedAgain();
    void numberingStaysSilent();
    void aTakenNumberIsRefused();
    void theContentIsReplacedAlone();
};
