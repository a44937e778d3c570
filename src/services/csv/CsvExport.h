#pragma once

#include "db/Transaction.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

/// Tables of the ledger and of its statistics for spreadsheet programs: CSV in UTF-8 with a byte
/// order mark and CR LF. A file is written beside and renamed, so a failed export leaves what was
/// there before.
namespace CsvExport {

struct Result {
    bool ok = false;
    qsizetype entries = 0; // of the ledger, written
    QString message; // Chinese, why not
};

/// The days that a report is about, both inclusive; unset where it is open.
struct Range {
    QDate from;
    QDate to;
};

/// Writes entries as a search returned them, in their order.
[[nodiscard]] Result exportLedger(const QList<Transaction>& entries, const QString& path);

/// Writes what the search of this filter finds, the same bytes as with its entries and sooner:
/// the rows go to the file without records in between. A ledger that cannot be read to its end
/// writes nothing.
[[nodiscard]] Result exportSearch(const TransactionFilter& filter, const QString& path);

/// Writes the sums per category in their order with their total, and the risk levels with their
/// shares.
[[nodiscard]] Result exportReport(const Range& range, const QList<CategoryStat>& categories,
    const RiskLevelCounts& levels, const QString& path);

/// "资金流水_20250101_20251231_20260102153000.csv": the days of the filter, 起 and 止 where they
/// are open, and the time.
QString ledgerFileName(
    const TransactionFilter& filter, const QDateTime& now = QDateTime::currentDateTime());

/// "统计报表_20250101_20251231_20260102_153000.csv", with the same texts for open ends.
QString reportFileName(const Range& range, const QDateTime& now = QDateTime::currentDateTime());

} // namespace CsvExport
