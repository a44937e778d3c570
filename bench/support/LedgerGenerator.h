#pragma once

#include <QString>

/// Fills a database file that has the program's schema with a company's ledger, the same one for
/// the same number of entries: all categories over ten years, owner's transfers among them, half
/// of the entries with vouchers, a third with notes, and decisions over a third of the transfers.
namespace LedgerGenerator {

void fill(const QString& databasePath, int entries);

} // namespace LedgerGenerator
