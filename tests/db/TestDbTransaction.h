#pragma once

#include "support/DatabaseTestCase.h"

class TestDbTransaction final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void whatIsCommittedStays();
    void whatIsNotCommittedIsTakenBack();
    void innerGuardsAreSavepoints_data();
    void innerGuardsAreSavepoints();
    void aFailedCommitIsRolledBack();
    void aRefusedStatementLeavesTheRestToTheGuard();
    void anInnerGuardDoesNotOutliveItsTransaction();
    void anOuterGuardEndsThoseInside();
    void withoutADatabaseNothingBegins();
    void closingEndsOpenGuards();
};
