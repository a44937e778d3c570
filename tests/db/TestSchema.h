#pragma once

#include "support/DatabaseTestCase.h"

class TestSchema final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aNewFileHasTheWholeSchema();
    void aNewFileHasTheProfileWithItsDefaults();
    void theConnectionIsSetUp();
    void aSecondStartChangesNothing();
    void badRowsAreRefused_data();
    void badRowsAreRefused();
    void changesRenewTheTimeOfChange_data();
    void changesRenewTheTimeOfChange();
    void deletingAProjectTakesWhatHangsOnIt();
    void deletingASourceTakesItsLinks_data();
    void deletingASourceTakesItsLinks();
    void aCheckpointEmptiesTheLog();
    void aCheckpointThatIsHeldBackWarns();
    void aCheckpointInsideATransactionFails();
    void theIntegrityCheckReportsItsFirstFinding();
};
