#include "services/figures/DashboardFigures.h"

#include "db/LedgerFiguresDao.h"
#include "db/ProfileDao.h"
#include "db/ProjectDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "services/figures/ReadResult.h"
#include "services/OwnerFlows.h"
#include "services/ProfileRules.h"

using namespace Qt::StringLiterals;

namespace DashboardFigures {

namespace {

std::optional<qint64> countEntries()
{
    LedgerFiguresDao figures;
    const qint64 count = figures.entryCount({}, {});
    return ifRead(figures, count);
}

std::optional<qint64> countVouchers()
{
    VoucherDao vouchers;
    const qint64 count = vouchers.countAll();
    return ifRead(vouchers, count);
}

std::optional<QList<Transaction>> readRecent()
{
    TransactionDao entries;
    const auto found = entries.search({ .limit = recentEntries });
    return ifRead(entries, found);
}

std::optional<QList<Project>> readProjects()
{
    ProjectDao projects;
    QList<Project> found = projects.list();
    found.removeIf([](const Project& project) { return project.status != ProjectStatus::Ongoing; });
    return ifRead(projects, found.mid(0, shownProjects));
}

bool isWithin(QDate date, const DateRange& range)
{
    return !(range.from.isValid() && date < range.from) && !(range.to.isValid() && date > range.to);
}

} // namespace

bool Figures::isIncomplete() const
{
    return !profile || !entryCount || !voucherCount || !counts || !month || !ownerBalanceFen
        || !months || !recent || !projects || todo.isIncomplete;
}

Figures read(QDate today)
{
    using namespace LedgerStatistics;
    return { .today = today,
        .profile = ProfileDao().find(),
        .entryCount = countEntries(),
        .voucherCount = countVouchers(),
        .counts = cardCounts(),
        .month = accountTotals(rangeOf(Period::ThisMonth, today)),
        .ownerBalanceFen = LedgerStatistics::ownerBalanceFen(rangeOf(Period::ThisYear, today)),
        .months = monthlySeries(lastTwelveMonths(today)),
        .recent = readRecent(),
        .projects = readProjects(),
        .todo = TodoList::readFacts(today) };
}

QList<qint64> ownerBalanceEntries(const QList<Transaction>& ownerFlows, const DateRange& range)
{
    QList<qint64> ids;
    for (const Transaction& flow : ownerFlows) {
        if (OwnerFlows::isTransfer(flow.category) && isWithin(flow.transDate, range))
            ids += flow.id;
    }
    return ids;
}

QString ownerBalanceText(qint64 balanceFen)
{
    if (balanceFen > 0)
        return u"公司欠股东：转入多于转付"_s;
    if (balanceFen < 0)
        return u"股东欠公司：转付多于转入"_s;
    return u"互不相欠：转入与转付相等"_s;
}

std::optional<Steps> stepsOf(const Figures& figures)
{
    if (!figures.profile || !figures.entryCount || !figures.voucherCount)
        return std::nullopt;
    return Steps { .profile = ProfileRules::isComplete(*figures.profile),
        .entry = *figures.entryCount > 0,
        .voucher = *figures.voucherCount > 0 };
}

} // namespace DashboardFigures
