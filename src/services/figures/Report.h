#pragma once

#include "services/figures/LedgerStatistics.h"

#include <optional>

/// The figures of one range, as the report page shows, exports and prints them.
struct Report {
    DateRange range;
    LedgerStatistics::ComparedTotals totals;
    QList<CategoryStat> categories; // largest turnover first
    RiskLevelCounts levels;
    QList<LedgerStatistics::MonthFigures> months;

    bool isEmpty() const { return totals.totals.all.count == 0; }

    /// Nothing when any of it could not be read: half a report would pass for a whole one.
    [[nodiscard]] static std::optional<Report> read(const DateRange& range, QDate today);
};

/// A table as texts: what the page shows is what paper and spreadsheet get.
struct FigureTable {
    QString title;
    QStringList header;
    QList<QStringList> rows;
    bool endsWithTotal = false;
};

/// How a report words its figures. Pure; all texts are Chinese and plain.
namespace ReportTexts {

[[nodiscard]] FigureTable categoryTable(const QList<CategoryStat>& categories);
[[nodiscard]] FigureTable accountTable(const LedgerStatistics::AccountTotals& totals);
[[nodiscard]] FigureTable riskTable(const RiskLevelCounts& levels);
[[nodiscard]] FigureTable trendTable(const Report& report);

/// "2025-01-01 至 2025-12-31", "不限" for all days.
[[nodiscard]] QString rangeText(const DateRange& range);
/// "较上期 +12.5%　同比 持平"; without a comparison why there is none.
[[nodiscard]] QString changeLine(const LedgerStatistics::ComparedTotals& totals,
    qint64 (*figure)(const LedgerStatistics::Totals&));
/// Which days are compared with which; empty without a comparison.
[[nodiscard]] QString comparedDays(const Report& report);

/// The report for paper, as HTML.
[[nodiscard]] QString html(const Report& report, const QString& companyName);

} // namespace ReportTexts
