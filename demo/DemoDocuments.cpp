#include "DemoDocuments.h"

#include "core/AppPaths.h"
#include "db/TransactionDao.h"
#include "DemoClock.h"
#include "DemoLedger.h"
#include "services/backup/BackupService.h"
#include "services/csv/CsvExport.h"
#include "services/documents/DocumentService.h"
#include "services/documents/DocumentTexts.h"

#include <QDir>
#include <QFileInfo>

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct FundDecisionRow {
    QStringView mark; // of the entries that it covers
    Direction direction;
    QStringView nature;
    QDate decided;
    QDate settled; // invalid: none agreed
    QStringView text;
};

const auto fundDecisions = std::to_array<FundDecisionRow>({
    { u"loan", Direction::In, u"股东向公司提供借款", { 2025, 3, 4 }, { 2026, 2, 9 },
        u"借款不计利息，公司可以提前归还。" },
    { u"float", Direction::Out, u"备用金", { 2025, 8, 19 }, { 2025, 9, 30 },
        u"用于设计周展位搭建，结余退回公司并附发票核销。" },
    { u"return", Direction::In, u"归还备用金", { 2025, 9, 3 }, {}, u"" },
    { u"repay", Direction::Out, u"归还股东借款", { 2025, 10, 28 }, {},
        u"归还二月十日股东借款的本金。" },
});

bool hasBytes(const QString& path)
{
    return QFileInfo(path).size() > 0;
}

} // namespace

Problem DemoDocuments::drawUp(const DemoLedger& ledger)
{
    DocumentService documents;
    DemoClock::set(QDate(2025, 1, 6), 10);
    QStringList measures = DocumentTexts::independenceMeasures();
    if (const Problem problem = keep(documents.generateIndependenceStatement(
            { .baseDate = QDate(2024, 12, 31), .measures = measures.mid(0, 4) })))
        return problem;
    if (const Problem problem = drawUpFundDecisions(ledger))
        return problem;
    DemoClock::set(QDate(2025, 3, 20), 14);
    QStringList items = DocumentTexts::annualReportItems(2024);
    items += DocumentTexts::profitKept();
    items += DocumentTexts::otherItem(
        u"同意聘请会计师事务所对公司 2024 年度财务会计报告进行审计。"_s);
    if (const Problem problem = keep(documents.generateAnnualDecision(
            { .year = 2024, .items = items, .decisionDate = QDate(2025, 3, 20) })))
        return problem;
    DemoClock::set(QDate(2025, 7, 1), 9, 30);
    if (const Problem problem
        = keep(documents.generateIndependenceStatement({ .baseDate = QDate(2025, 6, 30),
            .measures = measures,
            .furtherMeasures = u"公司印章与网银密钥由专人保管，股东个人不得单独支取。"_s })))
        return problem;
    DemoClock::set(DemoClock::today(), 9);
    return checkCovered(ledger);
}

Problem DemoDocuments::drawUpFundDecisions(const DemoLedger& ledger)
{
    int drawnUp = 0;
    for (const FundDecisionRow& row : fundDecisions) {
        const QList<qint64> ids = ledger.idsMarked(row.mark.toString());
        if (ids.isEmpty())
            continue;
        DemoClock::set(row.decided, 11);
        const auto result = DocumentService().generateFundDecision({ .direction = row.direction,
            .fundNature = row.nature.toString(),
            .transactionIds = ids,
            .decisionDate = row.decided,
            .settleDate = row.settled,
            .extraText = row.text.toString() });
        if (const Problem problem = keep(result))
            return problem;
        ++drawnUp;
    }
    return drawnUp > 0 ? Problem() : u"the ledger marks nothing for a fund decision"_s;
}

Problem DemoDocuments::keep(const DocumentResult& result)
{
    if (!result.ok)
        return result.error;
    if (!hasBytes(result.filePath))
        return u"%1 has no file at %2"_s.arg(result.docNo, result.filePath);
    m_pdfFiles += result.filePath;
    return {};
}

Problem DemoDocuments::checkCovered(const DemoLedger& ledger) const
{
    TransactionDao entries;
    for (const FundDecisionRow& row : fundDecisions) {
        for (const qint64 id : ledger.idsMarked(row.mark.toString())) {
            const auto entry = entries.findById(id);
            if (!entry || entry->riskAutoLevel == RiskLevel::Medium)
                return u"entry %1 is covered by a decision and still marked"_s.arg(id);
        }
    }
    return {};
}

Problem DemoDocuments::exportTo(const QString& folder)
{
    if (!QDir().mkpath(folder))
        return u"%1 could not be made"_s.arg(folder);
    TransactionDao ledger;
    const TransactionFilter year { .dateFrom = QDate(2025, 1, 1), .dateTo = QDate(2025, 12, 31) };
    const QDateTime now = QDateTime::currentDateTime();
    const QString ledgerPath = folder + u'/' + CsvExport::ledgerFileName(year, now);
    if (const auto result = CsvExport::exportLedger(ledger.search(year), ledgerPath); !result.ok)
        return result.message;
    const CsvExport::Range range { year.dateFrom, year.dateTo };
    const QString reportPath = folder + u'/' + CsvExport::reportFileName(range, now);
    if (const auto result
        = CsvExport::exportReport(range, ledger.categoryStats(range.from, range.to),
            ledger.riskLevelCounts(range.from, range.to), reportPath);
        !result.ok)
        return result.message;
    m_csvFiles += { ledgerPath, reportPath };
    for (const QString& path : m_csvFiles) {
        if (!hasBytes(path))
            return u"%1 was not written"_s.arg(path);
    }
    return {};
}

Problem DemoDocuments::backUp()
{
    DemoClock::set(DemoClock::today(), 8, 50);
    const BackupResult result = BackupService().backupTo(AppPaths::backupsDir());
    DemoClock::set(DemoClock::today(), 9);
    if (!result.ok || !result.message.isEmpty())
        return result.message;
    const BackupCheck check = BackupService::validateBackup(result.folder);
    return check.ok ? Problem() : Problem(check.message);
}
