#include "services/figures/Trend.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using LedgerStatistics::MonthFigures;

namespace Trend {

namespace {

DateRange cutTo(DateRange step, const DateRange& range)
{
    if (range.from.isValid())
        step.from = std::max(step.from, range.from);
    if (range.to.isValid())
        step.to = std::min(step.to, range.to);
    return step;
}

Step monthStep(QDate month, const DateRange& range)
{
    const QString year = QString::number(month.year()) + u"年"_s;
    const QString label = QString::number(month.month()) + u"月"_s;
    return { .range = cutTo({ month, month.addMonths(1).addDays(-1) }, range),
        .title = year + label,
        .label = label,
        .group = year };
}

Step yearStep(QDate month, const DateRange& range)
{
    const QString label = QString::number(month.year()) + u"年"_s;
    return { .range = cutTo({ QDate(month.year(), 1, 1), QDate(month.year(), 12, 31) }, range),
        .title = label,
        .label = label };
}

} // namespace

QList<Step> stepsOf(const QList<MonthFigures>& months, const DateRange& range)
{
    const auto stepOf = months.size() > mostMonths ? yearStep : monthStep;
    QList<Step> steps;
    for (const MonthFigures& month : months) {
        const Step step = stepOf(month.month, range);
        if (steps.isEmpty() || steps.last().title != step.title)
            steps += step;
        Step& last = steps.last();
        last.inFen = SaturatingSum::sum(last.inFen, month.incomeFen);
        last.outFen = SaturatingSum::sum(last.outFen, month.expenseFen);
    }
    return steps;
}

bool hasMovement(const QList<Step>& steps)
{
    return std::any_of(steps.begin(), steps.end(),
        [](const Step& step) { return step.inFen != 0 || step.outFen != 0; });
}

} // namespace Trend
