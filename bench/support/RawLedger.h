#pragma once

#include "db/Transaction.h"
#include "support/RawDatabase.h"

#include <vector>

/// The jobs of the ledger's store and of the risk engine, written straight against SQLite's C
/// interface: the same statements with columns taken by number, values into the same records.
/// Dates are parsed from their digits and codes compared as bytes; no text is made for either.
class RawLedger final {
public:
    explicit RawLedger(const QString& databasePath)
        : m_database(databasePath)
    {
    }

    /// All entries, or those that the keyword finds.
    std::vector<Transaction> search(const QByteArray& keyword = {});
    std::vector<CategoryStat> categoryStats();
    RiskLevelCounts riskLevelCounts();

    /// Decides with the program's own rules; reading and writing are raw.
    void reevaluate();

private:
    RawDatabase m_database;
};
