#pragma once

#include <QtGlobal>

#include <limits>

/// Sums of amounts and counts that stop at the largest or smallest number: only a damaged file
/// has amounts that large, and the rest of its figures should still be shown.
namespace SaturatingSum {

[[nodiscard]] constexpr qint64 sum(qint64 a, qint64 b)
{
    using Limits = std::numeric_limits<qint64>;
    if (b > 0 && a > Limits::max() - b)
        return Limits::max();
    if (b < 0 && a < Limits::min() - b)
        return Limits::min();
    return a + b;
}

[[nodiscard]] constexpr qint64 difference(qint64 a, qint64 b)
{
    // The smallest number has no counterpart: take it away in two steps.
    if (b == std::numeric_limits<qint64>::min())
        return sum(sum(a, std::numeric_limits<qint64>::max()), 1);
    return sum(a, -b);
}

} // namespace SaturatingSum
