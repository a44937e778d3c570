#include "services/figures/LedgerStatistics.h"

#include "core/TextRules.h"
#include "db/LedgerFiguresDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"

#include <QHash>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace LedgerStatistics {

namespace {

void add(Totals& totals, Direction direction, qint64 count, qint64 fen)
{
    totals.count += count;
    (direction == Direction::In ? totals.incomeFen : totals.expenseFen) += fen;
}

Totals totalsIn(const DateRange& range)
{
    return accountTotals(range).all;
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
        totals.count += stat.count;
        totals.incomeFen += stat.incomeFen;
        totals.expenseFen += stat.expenseFen;
    }
    return totals;
}

AccountTotals accountTotalsOf(const QList<AccountDirectionSum>& sums)
{
    AccountTotals totals;
    for (const AccountDirectionSum& sum : sums) {
        add(totals.all, sum.direction, sum.count, sum.sumFen);
        if (sum.account == AccountType::Company)
            add(totals.company, sum.direction, sum.count, sum.sumFen);
        else if (sum.account == AccountType::Private)
            add(totals.privateAccount, sum.direction, sum.count, sum.sumFen);
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
    QHash<QDate, MonthFigures> known;
    for (const MonthSum& sum : sums) {
        const QDate month = TextRules::dateFromText(sum.month + u"-01"_s);
        known.insert(month, { month, sum.incomeFen, sum.expenseFen });
    }
    QList<MonthFigures> series;
    if (!months.from.isValid() || !months.to.isValid())
        return series;
    for (QDate month = rangeOf(Period::ThisMonth, months.from).from; month <= months.to;
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
    const qint64 tenths = std::llround(std::abs(change / static_cast<double>(earlierFen)) * 1000.0);
    return (change < 0 ? u"-"_s : u"+"_s) + tenthsText(tenths);
}

AccountTotals accountTotals(const DateRange& range)
{
    return accountTotalsOf(LedgerFiguresDao().accountSums(range.from, range.to));
}

ComparedTotals comparedTotals(const DateRange& range, QDate today)
{
    ComparedTotals result { accountTotals(range), {} };
    if (const auto ranges = comparedRanges(range, today))
        result.comparison = { *ranges, totalsIn(ranges->current), totalsIn(ranges->previous),
            totalsIn(ranges->yearAgo) };
    return result;
}

QList<MonthFigures> monthlySeries(const DateRange& months)
{
    return monthlySeriesOf(LedgerFiguresDao().monthSums(months.from, months.to), months);
}

qint64 ownerBalanceFen(const DateRange& range)
{
    return LedgerFiguresDao().ownerBalanceFen(range.from, range.to);
}

CardCounts cardCounts()
{
    const RiskLevelCounts levels = TransactionDao().riskLevelCounts({}, {});
    return { levels.high, levels.medium, levels.low, VoucherDao().countUnlinked() };
}

} // namespace LedgerStatistics
