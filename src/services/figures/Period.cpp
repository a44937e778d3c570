#include "services/figures/Period.h"

#include <algorithm>

namespace {

QDate firstOfMonth(QDate date)
{
    return QDate(date.year(), date.month(), 1);
}

QDate lastOfMonth(QDate date)
{
    return QDate(date.year(), date.month(), date.daysInMonth());
}

DateRange monthsFrom(QDate first, int months)
{
    return { first, lastOfMonth(first.addMonths(months - 1)) };
}

bool isWholeMonths(const DateRange& range)
{
    return range.from.day() == 1 && range.to == lastOfMonth(range.to);
}

int monthsIn(const DateRange& range)
{
    return (range.to.year() - range.from.year()) * 12 + range.to.month() - range.from.month() + 1;
}

// The same stretch some months earlier. A range of whole months stays one, so that February is
// compared with all of January.
DateRange monthsEarlier(const DateRange& range, int months)
{
    const QDate to = range.to.addMonths(-months);
    return { range.from.addMonths(-months), isWholeMonths(range) ? lastOfMonth(to) : to };
}

} // namespace

DateRange rangeOf(Period period, QDate today)
{
    const QDate month = firstOfMonth(today);
    switch (period) {
    case Period::ThisMonth:
        return monthsFrom(month, 1);
    case Period::LastMonth:
        return monthsFrom(month.addMonths(-1), 1);
    case Period::ThisQuarter:
        return monthsFrom(month.addMonths(-((today.month() - 1) % 3)), 3);
    case Period::ThisYear:
        return monthsFrom(QDate(today.year(), 1, 1), 12);
    case Period::LastYear:
        return monthsFrom(QDate(today.year() - 1, 1, 1), 12);
    case Period::All:
        break;
    }
    return {};
}

std::optional<ComparedRanges> comparedRanges(const DateRange& range, QDate today)
{
    if (!range.from.isValid() || !range.to.isValid() || range.isInverted())
        return std::nullopt;
    DateRange current = range;
    if (range.from <= today)
        current.to = std::min(range.to, today);
    if (isWholeMonths(range))
        return ComparedRanges { current, monthsEarlier(current, monthsIn(range)),
            monthsEarlier(current, 12) };
    const qint64 days = current.from.daysTo(current.to) + 1;
    return ComparedRanges { current, { current.from.addDays(-days), current.from.addDays(-1) },
        { current.from.addYears(-1), current.to.addYears(-1) } };
}
