#pragma once

#include "support/DatabaseTestCase.h"

class TestTodoFacts final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aNewLedgerHasNoFacts();
    void factsAreReadFromTheStores();
    void coverageClearsTheTransfers();
    void withoutAThresholdNothingIsLarge();
    void whatCannotBeReadIsRemarked();
};
