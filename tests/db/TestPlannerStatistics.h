#pragma once

#include "support/DatabaseTestCase.h"

class TestPlannerStatistics final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void theLedgerLooksLinksUpByBothColumns_data();
    void theLedgerLooksLinksUpByBothColumns();
    void onlyLinksHaveStatistics();
    void nothingIsWrittenWhenTheyAreThere();
    void otherStatisticsStay();
    void aFailureIsNotFatal();
};
