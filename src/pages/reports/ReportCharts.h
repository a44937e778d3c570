#pragma once

#include "db/Transaction.h"
#include "widgets/charts/HBarChart.h"
#include "widgets/charts/ShareBar.h"

/// The figures of a report as the charts take them.
namespace ReportCharts {

/// Income and expense of each category together, in the order given.
[[nodiscard]] QList<HBarChart::Item> categoryBars(const QList<CategoryStat>& categories);

/// The risk levels, the gravest first; none without entries.
[[nodiscard]] QList<ShareBar::Item> riskParts(const RiskLevelCounts& levels);

} // namespace ReportCharts
