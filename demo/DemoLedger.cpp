#include "DemoLedger.h"

#include "db/DbTransaction.h"
#include "db/TransactionDao.h"
#include "DemoClock.h"
#include "EntryPlan.h"
#include "services/risk/RiskService.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Review {
    QStringView mark;
    RiskLevel level;
    QStringView note;
};

constexpr auto reviews = std::to_array<Review>({
    { u"lowered", RiskLevel::Low,
        u"客户误转至个人微信，已于次日全额转入对公账户，聊天记录与转账回单均已归档。" },
    { u"raised", RiskLevel::Medium, u"合同尚未签订即预付，待补合同后再下调。" },
});

QDate firstDay(DemoSize size)
{
    return size == DemoSize::Full ? QDate(2024, 11, 1) : QDate(2025, 10, 1);
}

} // namespace

DemoLedger::DemoLedger(const DemoCompany& company, DemoSize size)
    : m_entries(EntryPlan(company).between(firstDay(size), DemoClock::today().addDays(-1)))
{
}

Problem DemoLedger::store()
{
    DbTransaction transaction;
    TransactionDao ledger;
    for (DemoEntry& each : m_entries) {
        DemoClock::set(each.entry.transDate, 18, 20);
        if (!ledger.insert(each.entry))
            return u"entry \"%1\": %2"_s.arg(each.entry.summary, ledger.lastError());
    }
    DemoClock::set(DemoClock::today(), 9);
    RiskService().reevaluateAll();
    if (!transaction.commit())
        return transaction.lastError();
    const qsizetype stored = ledger.search({}).size();
    if (stored != m_entries.size())
        return u"%1 of %2 entries are in the ledger"_s.arg(
            QString::number(stored), QString::number(m_entries.size()));
    return {};
}

Problem DemoLedger::review() const
{
    TransactionDao ledger;
    for (const Review& review : reviews) {
        for (const qint64 id : idsMarked(review.mark.toString())) {
            if (!ledger.setManualOverride(id, review.level, review.note.toString()))
                return ledger.lastError();
            const auto stored = ledger.findById(id);
            if (!stored || stored->riskLevel != review.level)
                return u"entry %1 does not have the level set by hand"_s.arg(id);
        }
    }
    return {};
}

QList<qint64> DemoLedger::idsMarked(const QString& mark) const
{
    QList<qint64> ids;
    for (const DemoEntry& each : m_entries) {
        if (each.mark == mark)
            ids += each.entry.id;
    }
    return ids;
}

Problem DemoLedger::checkRisks()
{
    const RiskLevelCounts counts = TransactionDao().riskLevelCounts({}, {});
    for (const qint64 count : { counts.high, counts.medium, counts.low, counts.normal }) {
        if (count == 0)
            return u"a risk level has no entry: %1 high, %2 medium, %3 low, %4 normal"_s.arg(
                QString::number(counts.high), QString::number(counts.medium),
                QString::number(counts.low), QString::number(counts.normal));
    }
    return {};
}
