#pragma once

#include "services/figures/LedgerStatistics.h"

#include <QList>
#include <QString>

/// Income and expense along time, in steps that can still be told apart in a chart.
namespace Trend {

struct Step {
    DateRange range; // the step's days, cut at the ends of the whole range
    QString title; // "2026年3月"
    QString label; // "3月"
    QString group; // the year of a month; empty where the label itself is a year
    qint64 inFen = 0;
    qint64 outFen = 0;

    qint64 netFen() const { return SaturatingSum::difference(inFen, outFen); }
};

/// The longest range that is shown by months; longer ones go by years.
inline constexpr qsizetype mostMonths = 36;

[[nodiscard]] QList<Step> stepsOf(
    const QList<LedgerStatistics::MonthFigures>& months, const DateRange& range);

/// Whether anything moved at all.
[[nodiscard]] bool hasMovement(const QList<Step>& steps);

} // namespace Trend
