#pragma once

#include "support/DatabaseTestCase.h"

class TestVoucherDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void everyVoucherFieldIsStored();
    void updatesLeaveTheFileAlone();
    void filtersRestrictTheSearch_data();
    void filtersRestrictTheSearch();
    void vouchersAreCounted();
    void filesAreKnownByTheirContent();
    void allowedPairsAreLinked_data();
    void allowedPairsAreLinked();
    void otherPairsAreRejected_data();
    void otherPairsAreRejected();
    void linkingTwiceLeavesOneRow();
    void linksAreUndone();
    void linksAreListedInTheirOrder();
    void fundDecisionsCoverEntries();
};
