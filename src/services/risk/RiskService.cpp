#include "services/risk/RiskService.h"

#include "db/DbTransaction.h"
#include "db/LedgerFiguresDao.h"
#include "db/LinkDao.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"

namespace {

// Evaluations of single entries: fewer are over before a notice could be read.
constexpr qint64 noticeableEvaluations = 5'000;

QList<AutoRisk> evaluated(const QList<Transaction>& entries, const CompanyProfile& profile,
    const QHash<qint64, int>& flagged)
{
    const int windowDays = RiskRules::frequencyOf(profile).windowDays;
    QList<AutoRisk> results;
    results.reserve(entries.size());
    for (const Transaction& entry : entries) {
        const int groupSize = flagged.value(entry.id, 0);
        RiskRules::RiskResult result = RiskRules::evaluate(entry,
            { .voucherCount = entry.voucherCount,
                .inFrequentGroup = groupSize > 0,
                .groupSize = groupSize,
                .largeAmountFen = profile.largeAmountFen,
                .windowDays = windowDays });
        results.append({ entry.id, result.level, std::move(result.reasons) });
    }
    return results;
}

void noteBehind(TransactionDao& entries)
{
    if (!entries.setEvaluationDue())
        qWarning("RiskService: the ledger cannot be marked as behind");
}

bool stored(DbTransaction& transaction)
{
    if (transaction.commit())
        return true;
    qWarning("RiskService: the evaluation could not be stored: %s",
        qUtf8Printable(transaction.lastError()));
    return false;
}

} // namespace

RiskRules::RiskResult RiskService::evaluateInstant(const Transaction& entry, int voucherCount)
{
    const CompanyProfile profile = ProfileDao().load();
    return RiskRules::evaluate(entry,
        { .voucherCount = voucherCount,
            .largeAmountFen = profile.largeAmountFen,
            .windowDays = profile.frequentWindowDays });
}

void RiskService::reevaluateAll()
{
    DbTransaction transaction;
    if (!transaction.isOpen()) {
        qWarning("RiskService: no transaction for the evaluation: %s",
            qUtf8Printable(transaction.lastError()));
        return;
    }
    TransactionDao entries;
    ProfileDao profiles;
    LinkDao links;
    const CompanyProfile profile = profiles.load();
    const QHash<qint64, int> flagged = RiskRules::frequentGroups(entries.shareholderFlowDates(),
        links.fundDecisionTransactionIds(), RiskRules::frequencyOf(profile));
    const QList<AutoRisk> results = evaluated(entries.entriesToEvaluate(), profile, flagged);
    // Judged by half of the facts the levels would be wrong, and look as if they were not.
    if (const QString problem = entries.lastError() + profiles.lastError() + links.lastError();
        !problem.isEmpty()) {
        qWarning("RiskService: the ledger cannot be read: %s", qUtf8Printable(problem));
        noteBehind(entries);
        stored(transaction);
        return;
    }

    const qsizetype written = entries.updateAutoRisks(results);
    const bool isComplete = written == results.size();
    if (!isComplete) {
        qWarning("RiskService: updateRisk failed for tx %lld: %s",
            results.at(written).transactionId, qUtf8Printable(entries.lastError()));
        noteBehind(entries);
    }
    // Also after a failure: entries that were written keep their new result.
    if (stored(transaction) && isComplete)
        qInfo("RiskService reevaluateAll done: %lld rows, %lld frequent-group flagged",
            static_cast<qint64>(written), static_cast<qint64>(flagged.size()));
}

bool RiskService::isBehind()
{
    return TransactionDao().isEvaluationDue();
}

std::optional<QString> RiskService::storeProfile(const CompanyProfile& profile)
{
    DbTransaction transaction;
    ProfileDao profiles;
    TransactionDao entries;
    if (!transaction.isOpen())
        return transaction.lastError();
    if (!profiles.save(profile))
        return profiles.lastError();
    if (!entries.setEvaluationDue())
        return entries.lastError();
    if (!transaction.commit())
        return transaction.lastError();
    return {};
}

bool RiskService::takesNoticeablyLong(qsizetype evaluations)
{
    return evaluations > 0
        && LedgerFiguresDao().entryCount({}, {}) * evaluations >= noticeableEvaluations;
}
