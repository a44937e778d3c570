#pragma once

#include "db/LedgerFigures.h"
#include "db/Transaction.h"
#include "services/figures/Period.h"
#include "services/figures/SaturatingSum.h"

#include <QList>
#include <QString>

#include <optional>

/// The figures of dashboard and reports. Amounts are fen. The functions that take rows are pure;
/// those at the end read the stores, and give nothing when a read fails: a figure that could not
/// be read must not look like 0. The stores log the reason.
namespace LedgerStatistics {

struct Totals {
    qint64 count = 0;
    qint64 incomeFen = 0;
    qint64 expenseFen = 0;

    qint64 netFen() const { return SaturatingSum::difference(incomeFen, expenseFen); }
    bool operator==(const Totals&) const = default;
};

/// Company account beside the owner's private one. `all` also holds entries whose account is
/// neither, which only a damaged file has.
struct AccountTotals {
    Totals company;
    Totals privateAccount;
    Totals all;

    bool operator==(const AccountTotals&) const = default;
};

/// What a list of entries adds up to.
[[nodiscard]] Totals totalsOf(const QList<Transaction>& entries);
/// What the rows of a report by category add up to: its last line.
[[nodiscard]] Totals totalsOf(const QList<CategoryStat>& stats);
[[nodiscard]] AccountTotals accountTotalsOf(const QList<AccountDirectionSum>& sums);

struct MonthFigures {
    QDate month; // its first day
    qint64 incomeFen = 0;
    qint64 expenseFen = 0;

    qint64 netFen() const { return SaturatingSum::difference(incomeFen, expenseFen); }
    bool operator==(const MonthFigures&) const = default;
};

/// The twelve months that end with today's, as whole months.
[[nodiscard]] DateRange lastTwelveMonths(QDate today);
/// One row per month from the first to the last month of the range, zero where nothing moved. An
/// open end is that of the sums.
[[nodiscard]] QList<MonthFigures> monthlySeriesOf(
    const QList<MonthSum>& sums, const DateRange& months);

struct RiskShare {
    RiskLevel level = RiskLevel::Normal;
    qint64 count = 0;
    int permille = 0; // tenths of a percent

    bool operator==(const RiskShare&) const = default;
};

/// The levels from most to least severe. The shares add up to exactly 100.0 % (or all are 0
/// without entries): what rounding down leaves over goes to the largest remainders, of equal ones
/// to the more severe level.
[[nodiscard]] QList<RiskShare> riskSharesOf(const RiskLevelCounts& counts);
/// "33.3%".
[[nodiscard]] QString shareText(int permille);

/// How a figure moved against an earlier one: "+12.5%", "-3.0%", "持平" for no change or one
/// that rounds to 0.0 %, and "—" where there is nothing to compare with. A loss that shrinks is a
/// rise.
[[nodiscard]] QString changeText(qint64 currentFen, qint64 earlierFen);

struct ComparedTotals {
    AccountTotals totals; // of the whole range
    /// Present for closed ranges only; `current` ends today where the range is still running.
    struct Comparison {
        ComparedRanges ranges;
        Totals current;
        Totals previous;
        Totals yearAgo;
    };
    std::optional<Comparison> comparison;
};

/// What the cards of the dashboard count, over the whole ledger and archive.
struct CardCounts {
    qint64 high = 0;
    qint64 medium = 0;
    qint64 low = 0;
    qint64 unlinkedVouchers = 0;

    bool operator==(const CardCounts&) const = default;
};

[[nodiscard]] std::optional<AccountTotals> accountTotals(const DateRange& range);
[[nodiscard]] std::optional<ComparedTotals> comparedTotals(const DateRange& range, QDate today);
[[nodiscard]] std::optional<QList<MonthFigures>> monthlySeries(const DateRange& months);
/// The owner's balance (股东往来) of a range; above 0 the company owes the owner, below 0 the owner
/// owes the company. The one figure under this name everywhere.
[[nodiscard]] std::optional<qint64> ownerBalanceFen(const DateRange& range);
[[nodiscard]] std::optional<CardCounts> cardCounts();

} // namespace LedgerStatistics
