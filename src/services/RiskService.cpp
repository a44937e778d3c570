#include "services/RiskService.h"

#include "db/DbTransaction.h"
#include "db/LinkDao.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"

namespace {

constexpr int defaultWindowDays = 30;
constexpr int defaultCount = 3;

struct Thresholds {
    qint64 largeAmountFen;
    int windowDays;
    int count;
};

Thresholds storedThresholds()
{
    const CompanyProfile profile = ProfileDao().load();
    return { .largeAmountFen = profile.largeAmountFen,
        .windowDays
        = profile.frequentWindowDays > 0 ? profile.frequentWindowDays : defaultWindowDays,
        .count = profile.frequentCount > 0 ? profile.frequentCount : defaultCount };
}

QHash<qint64, int> flaggedFlows(const Thresholds& thresholds)
{
    QList<RiskRules::Flow> flows;
    for (const Transaction& entry : TransactionDao().listShareholderFlows())
        flows.append({ .id = entry.id, .date = entry.transDate });
    return RiskRules::frequentGroups(
        flows, LinkDao().fundDecisionTransactionIds(), thresholds.windowDays, thresholds.count);
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
    const Thresholds thresholds = storedThresholds();
    const QHash<qint64, int> flagged = flaggedFlows(thresholds);

    TransactionDao entries;
    QList<AutoRisk> results;
    for (const Transaction& entry : entries.search({})) {
        const int groupSize = flagged.value(entry.id, 0);
        RiskRules::RiskResult result = RiskRules::evaluate(entry,
            { .voucherCount = entry.voucherCount,
                .inFrequentGroup = groupSize > 0,
                .groupSize = groupSize,
                .largeAmountFen = thresholds.largeAmountFen,
                .windowDays = thresholds.windowDays });
        results.append({ entry.id, result.level, std::move(result.reasons) });
    }

    const qsizetype written = entries.updateAutoRisks(results);
    if (!transaction.commit()) {
        qWarning("RiskService: the evaluation could not be stored: %s",
            qUtf8Printable(transaction.lastError()));
        return;
    }
    if (written < results.size()) {
        qWarning("RiskService: updateRisk failed for tx %lld: %s",
            results.at(written).transactionId, qUtf8Printable(entries.lastError()));
        return;
    }
    qInfo("RiskService reevaluateAll done: %lld rows, %lld frequent-group flagged",
        static_cast<qint64>(written), static_cast<qint64>(flagged.size()));
}
