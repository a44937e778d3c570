#include "services/figures/LedgerStatistics.h"

#include "core/TextRules.h"
#include "db/LedgerFiguresDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "services/figures/ReadResult.h"

#include <QMap>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using SaturatingSum::sum;

namespace LedgerStatistics {

namespace {

// Of a percent; far above any true change and still a number that can be rounded.
constexpr double largestTenths = 1e18;

void add(Totals& totals, Direction direction, qint64 count, qint64 fen)
{
    qint64& sideFen = direction == Direction::In ? totals.incomeFen : totals.expenseFen;
    totals.count = sum(totals.count, count);
    sideFen = sum(sideFen, fen);
}

QString tenthsText(qint64 tenths)
{
    return QString::number(tenths / 10) + u'.' + QString::number(tenths % 10) + u'%';
}

} // namespace

Totals totalsOf(const QList<Transaction>& entries)
{
    Totals totals;
    for (const Transaction& entry : entries)
        add(totals, entry.direction, 1, entry.amountFen);
    return totals;
}

Totals totalsOf(const QList<CategoryStat>& stats)
{
    Totals totals;
    for (const CategoryStat& stat : stats) {
        totals.count = sum(totals.count, stat.count);
        totals.incomeFen = sum(totals.incomeFen, stat.incomeFen);
        totals.expenseFen = sum(totals.expenseFen, stat.expenseFen);
    }
    return totals;
}

AccountTotals accountTotalsOf(const QList<AccountDirectionSum>& sums)
{
    AccountTotals totals;
    for (const AccountDirectionSum& row : sums) {
        add(totals.all, row.direction, row.count, row.sumFen);
        if (row.account == AccountType::Company)
            add(totals.company, row.direction, row.count, row.sumFen);
        else if (row.account == AccountType::Private)
            add(totals.privateAccount, row.direction, row.count, row.sumFen);
    }
    return totals;
}

DateRange lastTwelveMonths(QDate today)
{
    const QDate month = rangeOf(Period::ThisMonth, today).from;
    return { month.addMonths(-11), month.addMonths(1).addDays(-1) };
}

QList<MonthFigures> monthlySeriesOf(const QList<MonthSum>& sums, const DateRange& months)
{
    QMap<QDate, MonthFigures> known;
    for (const MonthSum& row : sums) {
        const QDate month = TextRules::dateFromText(row.month + u"-01"_s);
        if (month.isValid())
            known.insert(month, { month, row.incomeFen, row.expenseFen });
    }
    // An open end is where the entries begin or end.
    DateRange shown = months;
    if (!shown.from.isValid() && !known.isEmpty())
        shown.from = known.firstKey();
    if (!shown.to.isValid() && !known.isEmpty())
        shown.to = known.lastKey();
    QList<MonthFigures> series;
    if (!shown.from.isValid() || !shown.to.isValid())
        return series;
    for (QDate month = rangeOf(Period::ThisMonth, shown.from).from; month <= shown.to;
         month = month.addMonths(1))
        series += known.value(month, { month, 0, 0 });
    return series;
}

QList<RiskShare> riskSharesOf(const RiskLevelCounts& counts)
{
    QList<RiskShare> shares { { RiskLevel::High, counts.high },
        { RiskLevel::Medium, counts.medium }, { RiskLevel::Low, counts.low },
        { RiskLevel::Normal, counts.normal } };
    const qint64 total = counts.high + counts.medium + counts.low + counts.normal;
    if (total <= 0)
        return shares;

    int left = 1000;
    for (RiskShare& share : shares) {
        share.permille = static_cast<int>(share.count * 1000 / total);
        left -= share.permille;
    }
    QList<qsizetype> places { 0, 1, 2, 3 };
    std::stable_sort(places.begin(), places.end(), [&](qsizetype a, qsizetype b) {
        return shares.at(a).count * 1000 % total > shares.at(b).count * 1000 % total;
    });
    for (int i = 0; i < left; ++i)
        ++shares[places.at(i)].permille;
    return shares;
}

QString shareText(int permille)
{
    return tenthsText(permille);
}

QString changeText(qint64 currentFen, qint64 earlierFen)
{
    if (currentFen == earlierFen)
        return currentFen == 0 ? u"—"_s : u"持平"_s;
    if (earlierFen == 0)
        return u"—"_s;
    // Sums of a ledger stay far below the 53 bits that a double holds exactly.
    const double change = static_cast<double>(currentFen) - static_cast<double>(earlierFen);
    const double exact = std::abs(change / static_cast<double>(earlierFen)) * 1000.0;
    const qint64 tenths = std::llround(std::min(exact, largestTenths));
    if (tenths == 0)
        return u"持平"_s;
    return (change < 0 ? u"-"_s : u"+"_s) + tenthsText(tenths);
}

std::optional<AccountTotals> accountTotals(const DateRange& range)
{
    LedgerFiguresDao figures;
    const auto sums = figures.accountSums(range.from, range.to);
    return ifRead(figures, accountTotalsOf(sums));
}

std::optional<ComparedTotals> comparedTotals(const DateRange& range, QDate today)
{
    const auto totals = accountTotals(range);
    if (!totals)
        return std::nullopt;
    ComparedTotals result { *totals, {} };
    const auto ranges = comparedRanges(range, today);
    if (!ranges)
        return result;
    const auto current = accountTotals(ranges->current);
    const auto previous = accountTotals(ranges->previous);
    const auto yearAgo = accountTotals(ranges->yearAgo);
    if (!current || !previous || !yearAgo)
        return std::nullopt;
    result.comparison = { *ranges, current->all, previous->all, yearAgo->all };
    return result;
}

std::optional<QList<MonthFigures>> monthlySeries(const DateRange& months)
{
    LedgerFiguresDao figures;
    const auto sums = figures.monthSums(months.from, months.to);
    return ifRead(figures, monthlySeriesOf(sums, months));
}

std::optional<qint64> ownerBalanceFen(const DateRange& range)
{
    LedgerFiguresDao figures;
    const qint64 balanceFen = figures.ownerBalanceFen(range.from, range.to);
    return ifRead(figures, balanceFen);
}

std::optional<CardCounts> cardCounts()
{
    TransactionDao entries;
    const RiskLevelCounts levels = entries.riskLevelCounts({}, {});
    VoucherDao vouchers;
    const qint64 unlinked = vouchers.countUnlinked();
    if (!entries.lastError().isEmpty())
        return std::nullopt;
    return ifRead(vouchers, CardCounts { levels.high, levels.medium, levels.low, unlinked });
}

} // namespace LedgerStatistics
