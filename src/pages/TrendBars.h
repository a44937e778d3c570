#pragma once

#include "services/figures/Trend.h"
#include "widgets/charts/BarChart.h"

/// The steps of a trend as the bar chart takes them.
[[nodiscard]] QList<BarChart::Item> barsOf(const QList<Trend::Step>& steps);
