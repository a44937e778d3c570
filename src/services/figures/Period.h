#pragma once

#include "core/CodeTable.h"

#include <QDate>

#include <optional>

/// Days from `from` to `to`, both included; an invalid day leaves that end open.
struct DateRange {
    QDate from;
    QDate to;

    bool isInverted() const { return from.isValid() && to.isValid() && from > to; }
    bool operator==(const DateRange&) const = default;
};

/// The ranges that reports offer by name.
enum class Period { ThisMonth, LastMonth, ThisQuarter, ThisYear, LastYear, All };

template <>
inline constexpr auto codeTable<Period> = std::to_array<CodeRow<Period>>({
    { Period::ThisMonth, u"this_month", u"本月" },
    { Period::LastMonth, u"last_month", u"上月" },
    { Period::ThisQuarter, u"this_quarter", u"本季" },
    { Period::ThisYear, u"this_year", u"本年" },
    { Period::LastYear, u"last_year", u"上年" },
    { Period::All, u"all", u"全部" },
});

/// The whole calendar period, days yet to come included; open at both ends for `All`.
[[nodiscard]] DateRange rangeOf(Period period, QDate today);

/// What a range is fairly compared with. A range that is still running is cut at today and set
/// against equally long beginnings, so that the tenth of a month is not measured by a whole one.
struct ComparedRanges {
    DateRange current;
    DateRange previous; // the months, or days, right before
    DateRange yearAgo; // the same days a year earlier

    bool operator==(const ComparedRanges&) const = default;
};

/// The ranges to compare `range` with: whole calendar months with as many months before, anything
/// else with as many days. Nothing for open or inverted ranges.
[[nodiscard]] std::optional<ComparedRanges> comparedRanges(const DateRange& range, QDate today);
