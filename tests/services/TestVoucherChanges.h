#pragma once

#include "support/DatabaseTestCase.h"

class TestVoucherChanges final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void anUpdateRewritesDescriptionAndLinks();
    void anUpdateDropsContractLinks();
    void anUpdateWithoutNameOrDateHasDefaults();
    void risksFollowTheVoucher();
    void everyAffectedEntryEvaluatesTheLedgerOnce();
    void aFailedUpdateChangesNothing_data();
    void aFailedUpdateChangesNothing();
    void aDeletedVoucherTakesRowLinksAndFile();
    void aFailedDeletionChangesNothing_data();
    void aFailedDeletionChangesNothing();
    void aFileThatCannotBeRemovedStaysBehind();
    void filesOutsideOfTheArchiveAreNeverRemoved_data();
    void filesOutsideOfTheArchiveAreNeverRemoved();
    void aFileOfAnotherVoucherStays();
    void whatIsGoneCannotBeChanged();
    void aReadThatFailsIsNotTakenForAMissingVoucher();
};
