#include "services/figures/TodoFacts.h"

#include "db/DocumentDao.h"
#include "db/LedgerFiguresDao.h"
#include "db/LinkDao.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "services/figures/LedgerStatistics.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace TodoList {

namespace {

QList<Decision> decisionsOf(
    const QList<DocumentRecord>& documents, const QList<CoveredSum>& coveredSums)
{
    QHash<qint64, CoveredSum> covered;
    for (const CoveredSum& sum : coveredSums)
        covered.insert(sum.documentId, sum);
    QList<Decision> decisions;
    for (const DocumentRecord& document : documents)
        decisions += { document, covered.value(document.id) };
    return decisions;
}

QList<DocumentRecord> ofType(const QList<DocumentRecord>& documents, DocType type)
{
    QList<DocumentRecord> chosen;
    std::copy_if(documents.begin(), documents.end(), std::back_inserter(chosen),
        [type](const DocumentRecord& document) { return document.docType == type; });
    return chosen;
}

QDate latestDate(const QList<DocumentRecord>& documents)
{
    QDate latest;
    for (const DocumentRecord& document : documents)
        latest = std::max(latest, document.docDate);
    return latest;
}

template <typename... Stores> bool hasFailed(const Stores&... stores)
{
    return (!stores.lastError().isEmpty() || ...);
}

} // namespace

Facts readFacts(QDate today)
{
    TransactionDao entries;
    LedgerFiguresDao figures;
    LinkDao links;
    DocumentDao documents;
    VoucherDao vouchers;
    ProfileDao profiles;
    const DateRange lastYear = rangeOf(Period::LastYear, today);

    Facts facts;
    facts.today = today;
    facts.profile = profiles.load();
    facts.highRiskCount = entries.riskLevelCounts({}, {}).high;
    facts.ownerFlows = entries.shareholderFlowsToReview();
    facts.coveredIds = links.fundDecisionTransactionIds();
    facts.entriesLastYear = figures.entryCount(lastYear.from, lastYear.to);
    facts.hasAnnualDecisionLastYear = documents.existsAnnualForYear(lastYear.from.year());
    const QList<DocumentRecord> archive = documents.listWithoutContent();
    facts.latestIndependenceStatement = latestDate(ofType(archive, DocType::IndependenceStatement));
    facts.fundDecisions
        = decisionsOf(ofType(archive, DocType::FundDecision), figures.fundDecisionSums());
    facts.ownerBalanceFen = figures.ownerBalanceFen({}, today);
    facts.unlinkedVouchers = vouchers.countUnlinked();
    if (facts.profile.largeAmountFen > 0)
        facts.largeEntriesWithoutVoucher
            = figures.largeEntriesWithoutVoucher(facts.profile.largeAmountFen);
    facts.isIncomplete = hasFailed(entries, figures, links, documents, vouchers, profiles);
    return facts;
}

} // namespace TodoList
