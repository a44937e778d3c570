#pragma once

#include "support/DatabaseTestCase.h"

/// Rows that the schema refuses but that a damaged or foreign file can hold: they must load.
class TestDamagedRows final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init();
    void ledgerEntriesLoad();
    void brokenDatesAreUnset_data();
    void brokenDatesAreUnset();
    void projectsAndContractsLoad();
    void theProfileLoads();
    void vouchersAndLinksLoad();
    void documentsLoad();
};
