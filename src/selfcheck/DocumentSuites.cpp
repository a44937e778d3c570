#include "core/Money.h"
#include "db/ContractDao.h"
#include "db/DocumentDao.h"
#include "db/ProjectDao.h"
#include "selfcheck/CheckDao.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Samples.h"
#include "selfcheck/Suites.h"
#include "services/documents/DocumentRules.h"
#include "services/documents/DocumentTemplates.h"
#include "services/documents/DocumentTexts.h"

using namespace Qt::StringLiterals;

namespace {

// A year that no document of a company of today can have.
constexpr int unusedYear = 1970;

const QDate decisionDay(2024, 2, 29);

void numberDocuments(Findings& findings)
{
    DocumentDao documents;
    for (const DocType type : allValues<DocType>()) {
        const QString kind = labelOf(type);
        const QString first = documents.nextDocNo(type, unusedYear);
        findings.expect(first.startsWith(u"KYR-"_s) && first.endsWith(u"-1970-0001"_s),
            u"%1的编号不正确：%2"_s.arg(kind, first));
        DocumentRecord record = Samples::document(first);
        record.docType = type;
        if (!findings.expect(
                documents.insert(record), u"%1无法写入：%2"_s.arg(kind, documents.lastError())))
            continue;
        const QString second = documents.nextDocNo(type, unusedYear);
        findings.expect(
            second.endsWith(u"-1970-0002"_s), u"%1的编号没有递增：%2"_s.arg(kind, second));
    }
}

template <typename Dao, typename Record>
void numberRecords(Findings& findings, const QString& what, Dao dao, const Record& sample)
{
    Record first = sample;
    Record second = sample;
    if (!findings.expect(dao.insert(first) && dao.insert(second),
            u"%1无法写入：%2"_s.arg(what, dao.lastError())))
        return;
    const auto codeOfRow = [&dao](qint64 id) {
        const auto row = dao.findById(id);
        return row ? row->code : QString();
    };
    const QString code = codeOfRow(first.id);
    findings.expect(
        !code.isEmpty() && code != codeOfRow(second.id), u"%1的编号没有递增：%2"_s.arg(what, code));
}

// What is entered must stand in the page as text, and never act as markup.
void checkPage(Findings& findings, DocumentRecord record, const QList<Transaction>& entries,
    const QStringList& parts)
{
    record.docNo = u"KYR-XX-1970-0001"_s;
    const QString page = DocumentTemplates::compose(Samples::company(), record, entries);
    const QString kind = labelOf(record.docType);
    for (const QString& part :
        QStringList { record.docNo, DocumentTemplates::escaped(Samples::awkwardText()) } + parts)
        findings.expect(page.contains(part), u"%1缺少内容：%2"_s.arg(kind, part));
    findings.expect(!page.contains(Samples::awkwardText()), u"%1没有转义输入的文字"_s.arg(kind));
}

} // namespace

void Suites::numbering(Findings& findings)
{
    CheckDao rows;
    const std::optional<QStringList> odd
        = rows.texts(u"SELECT doc_no FROM documents WHERE doc_no NOT LIKE 'KYR-__-____-%'"_s);
    findings.expect(odd && odd->isEmpty(),
        u"文书编号格式异常：%1"_s.arg(odd ? odd->value(0) : rows.lastError()));
    numberDocuments(findings);
    numberRecords(findings, u"项目"_s, ProjectDao(), Samples::project());
    Project project = Samples::project();
    if (ProjectDao().insert(project))
        numberRecords(findings, u"合同"_s, ContractDao(), Samples::contract(project.id));
}

void Suites::documentTexts(Findings& findings)
{
    const QStringList reports = DocumentTexts::annualReportItems(unusedYear);
    checkPage(findings,
        DocumentRules::draft(AnnualDecisionInput {
            .year = unusedYear, .items = reports, .decisionDate = decisionDay }),
        {}, { DocumentTemplates::escaped(reports.first()), u"2024-02-29"_s });

    const QStringList measures = DocumentTexts::independenceMeasures();
    checkPage(findings,
        DocumentRules::draft(
            IndependenceStatementInput { .baseDate = decisionDay, .measures = measures }),
        {}, { DocumentTemplates::escaped(measures.last()), u"声明基准日"_s });

    const QList<Transaction> entries { Samples::riskyEntry(), Samples::riskyEntry() };
    const qint64 total = 2 * entries.first().amountFen;
    checkPage(findings,
        DocumentRules::draft(FundDecisionInput { .direction = Direction::In,
            .fundNature = u"借款"_s,
            .transactionIds = { 1, 2 },
            .decisionDate = decisionDay }),
        entries, { Money::format(total), Money::toChineseUpper(total) });
}
