#include "core/AppPaths.h"
#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "services/documents/DocumentService.h"
#include "services/DocumentSamples.h"
#include "services/risk/RiskService.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/Warnings.h"

#include <QDir>

#include <limits>

using namespace Qt::StringLiterals;
using DocumentSamples::fundInput;
using TestDatabase::row;

namespace {

QString exportPath(const QString& name)
{
    return AppPaths::exportsDir() + u'/' + name;
}

QStringList exportedFiles()
{
    return QDir(AppPaths::exportsDir()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QString documentCount()
{
    return row(u"SELECT COUNT(*) FROM documents"_s);
}

QString flaggedCount()
{
    return row(u"SELECT COUNT(*) FROM transactions WHERE risk_level = 'medium'"_s);
}

} // namespace

class TestDocumentService final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        QVERIFY(DocumentSamples::storeCompany());
    }

    void anAnnualDecisionIsStoredWithItsPdf()
    {
        const auto result
            = DocumentService().generateAnnualDecision(DocumentSamples::annualInput());
        QVERIFY2(result.ok, qUtf8Printable(result.error));
        QCOMPARE(result.docNo, u"KYR-ND-2025-0001"_s);
        QCOMPARE(result.filePath, exportPath(u"KYR-ND-2025-0001_年度股东决定书.pdf"_s));
        QVERIFY(TestFile::bytesOf(result.filePath).startsWith("%PDF-"));
        QCOMPARE(exportedFiles().size(), 1);

        const auto stored = DocumentDao().findById(result.docId);
        QVERIFY(stored);
        QCOMPARE(stored->title, u"2025年度股东决定书"_s);
        QCOMPARE(stored->docYear, 2025);
        QCOMPARE(stored->docDate, QDate(2026, 3, 31));
        QVERIFY(!stored->fundDirection);
        QCOMPARE(stored->filePath, result.filePath);
        QCOMPARE(stored->contentHtml, DocumentSamples::annualHtml());
        QCOMPARE(DocumentRules::selectedTexts(*stored), DocumentSamples::annualInput().items);
    }

    void aFundDecisionCoversItsEntries()
    {
        const QList<qint64> ids = DocumentSamples::storeEntries(3);
        const auto result
            = DocumentService().generateFundDecision(fundInput({ ids[2], ids[0], ids[2] }));
        QVERIFY2(result.ok, qUtf8Printable(result.error));
        QCOMPARE(result.filePath, exportPath(u"KYR-FD-2025-0001_公私资金往来决定书.pdf"_s));
        QCOMPARE(LinkDao().fundDecisionTransactionIds(), (QSet<qint64> { ids[0], ids[2] }));
        QCOMPARE(row(u"SELECT title, doc_year, doc_date, fund_direction, fund_nature, settle_date, "
                     "extra_text, selected_items FROM documents"_s),
            u"公私资金往来决定书（备用金）|2025|2025-06-30|out|备用金|2025-12-31|凭票据报销，\n余款退回"
            "对公账户。|[\"%1\",\"%2\"]"_s.arg(ids[2])
                .arg(ids[0]));
        const QString html = DocumentDao().findById(result.docId)->contentHtml;
        QVERIFY(html.contains(u"本次往来共 2 笔，金额合计人民币 49,382.68 元"_s));
        QVERIFY(html.indexOf(u"2025-01-03"_s) < html.indexOf(u"2025-01-01"_s));
    }

    void anIndependenceStatementIsStored()
    {
        const auto result
            = DocumentService().generateIndependenceStatement(DocumentSamples::independenceInput());
        QVERIFY2(result.ok, qUtf8Printable(result.error));
        QCOMPARE(result.filePath, exportPath(u"KYR-DC-2025-0001_财产独立声明书.pdf"_s));
        QCOMPARE(row(u"SELECT title, doc_year, doc_date, extra_text, fund_nature FROM documents"_s),
            u"财产独立声明书|∅|2025-12-31|聘请代理记账机构按月记账|∅"_s);
        QVERIFY(DocumentDao()
                    .findById(result.docId)
                    ->contentHtml.contains(u"（六）其他独立性措施：聘请代理记账机构按月记账"_s));
    }

    void anIncompleteProfileIsRefused()
    {
        const QList<qint64> ids = DocumentSamples::storeEntries(1);
        const auto stored = DocumentService().generateFundDecision(fundInput(ids));
        QVERIFY(stored.ok);
        const QByteArray pdf = TestFile::bytesOf(stored.filePath);
        QCOMPARE(TestDatabase::run({ u"UPDATE company_profile SET shareholder_name = ' '"_s }),
            QString());
        const QString error = u"公司档案不完整：请先填写公司名称与股东姓名再生成文书。"_s;
        DocumentService service;
        QCOMPARE(service.generateAnnualDecision(DocumentSamples::annualInput()).error, error);
        // The profile comes before the entries.
        QCOMPARE(service.generateFundDecision(fundInput({ 99 })).error, error);
        QCOMPARE(service.generateIndependenceStatement(DocumentSamples::independenceInput()).error,
            error);
        QCOMPARE(service.regenerate(stored.docId).error, error);
        QCOMPARE(documentCount(), u"1"_s);
        QCOMPARE(exportedFiles().size(), 1);
        QCOMPARE(TestFile::bytesOf(stored.filePath), pdf);
    }

    void inputIsCheckedBeforeTheProfile()
    {
        QCOMPARE(
            TestDatabase::run({ u"UPDATE company_profile SET company_name = ''"_s }), QString());
        DocumentService service;
        QCOMPARE(service.generateAnnualDecision({}).error, u"决定年份超出有效范围。"_s);
        AnnualDecisionInput next = DocumentSamples::annualInput();
        next.year = QDate::currentDate().year() + 1;
        QCOMPARE(service.generateAnnualDecision(next).error, u"决定年份超出有效范围。"_s);
        QCOMPARE(service.generateFundDecision({}).error, u"请至少勾选一笔资金流水。"_s);
        const auto result = service.generateIndependenceStatement({});
        QCOMPARE(result.error, u"声明基准日无效。"_s);
        QVERIFY(!result.ok && result.docId == 0 && result.filePath.isEmpty());
    }

    void entriesMustExist()
    {
        const QList<qint64> ids = DocumentSamples::storeEntries(1);
        const auto result = DocumentService().generateFundDecision(fundInput({ ids[0], 77, 78 }));
        QCOMPARE(result.error, u"流水 #77 不存在，请刷新后重试。"_s);
        QCOMPARE(documentCount(), u"0"_s);
        QVERIFY(exportedFiles().isEmpty());
    }

    void entriesMustGoTheChosenWay()
    {
        Transaction entry = DocumentSamples::entry(0, Direction::Out);
        entry.summary = u"房租%1"_s;
        QVERIFY(TransactionDao().insert(entry));
        FundDecisionInput input = fundInput({ entry.id });
        input.direction = Direction::In;
        QCOMPARE(DocumentService().generateFundDecision(input).error,
            u"流水「房租%1」的收支方向与所选往来类型不一致。"_s);
        QVERIFY(exportedFiles().isEmpty());
        // No number was used up.
        input.direction = Direction::Out;
        QCOMPARE(DocumentService().generateFundDecision(input).docNo, u"KYR-FD-2025-0001"_s);
    }

    void sumsBeyondAnyAmountAreRefused()
    {
        Transaction entry = DocumentSamples::entry(0);
        entry.amountFen = std::numeric_limits<qint64>::max();
        QVERIFY(TransactionDao().insert(entry));
        const qint64 small = DocumentSamples::storeEntries(1).first();
        QCOMPARE(DocumentService().generateFundDecision(fundInput({ entry.id, small })).error,
            u"所选流水的金额合计过大，请分次出具决定书。"_s);
        QCOMPARE(documentCount(), u"0"_s);
    }

    void nothingIsWrittenByAPreview()
    {
        const QList<qint64> ids = DocumentSamples::storeEntries(2);
        const QStringList before = TestDatabase::dump();
        DocumentService service;
        QVERIFY(service.preview(AnnualDecisionInput {}).contains(u"二、决定事项"_s));
        QVERIFY(service.preview(FundDecisionInput {})
                    .contains(u"资金性质为<b>（待填写）</b>。本次往来共 0 笔"_s));
        QVERIFY(service.preview(IndependenceStatementInput {}).contains(u"声明基准日"_s));
        QVERIFY(
            service.preview(fundInput(ids + QList<qint64> { 99 })).contains(u"本次往来共 2 笔"_s));
        QCOMPARE(TestDatabase::dump(), before);
        QVERIFY(exportedFiles().isEmpty());
    }

    void thePreviewIsWhatWillBeStored()
    {
        const FundDecisionInput input = fundInput(DocumentSamples::storeEntries(2));
        QString preview = DocumentService().preview(input);
        const auto result = DocumentService().generateFundDecision(input);
        QVERIFY(result.ok);
        QCOMPARE(preview.replace(u"（生成时自动编号）"_s, result.docNo),
            DocumentDao().findById(result.docId)->contentHtml);
    }

    void numbersRunPerKindAndYear()
    {
        DocumentService service;
        const QList<qint64> ids = DocumentSamples::storeEntries(1);
        QCOMPARE(service.generateFundDecision(fundInput(ids)).docNo, u"KYR-FD-2025-0001"_s);
        const auto second = service.generateFundDecision(fundInput(ids));
        QCOMPARE(second.docNo, u"KYR-FD-2025-0002"_s);
        QVERIFY(service.deleteDocument(second.docId).ok);
        QCOMPARE(service.generateFundDecision(fundInput(ids)).docNo, u"KYR-FD-2025-0002"_s);
        FundDecisionInput nextYear = fundInput(ids);
        nextYear.decisionDate = QDate(2026, 1, 1);
        QCOMPARE(service.generateFundDecision(nextYear).docNo, u"KYR-FD-2026-0001"_s);
        // The annual decision goes by its year, not by its date; a second one is not refused.
        QCOMPARE(service.generateAnnualDecision(DocumentSamples::annualInput()).docNo,
            u"KYR-ND-2025-0001"_s);
        QCOMPARE(service.generateAnnualDecision(DocumentSamples::annualInput()).docNo,
            u"KYR-ND-2025-0002"_s);
    }

    void aDecisionLiftsTheFrequentTransferFlag()
    {
        const QList<qint64> ids = DocumentSamples::storeEntries(4);
        RiskService().reevaluateAll();
        QCOMPARE(flaggedCount(), u"4"_s);
        const auto result = DocumentService().generateFundDecision(fundInput({ ids[0], ids[1] }));
        QVERIFY(result.ok);
        QCOMPARE(flaggedCount(), u"2"_s);
        QVERIFY(DocumentService().deleteDocument(result.docId).ok);
        QCOMPARE(flaggedCount(), u"4"_s);
    }

    void documentsWithoutEntriesEvaluateNothing()
    {
        DocumentSamples::storeEntries(4);
        DocumentService service;
        const auto annual = service.generateAnnualDecision(DocumentSamples::annualInput());
        const auto statement
            = service.generateIndependenceStatement(DocumentSamples::independenceInput());
        QVERIFY(annual.ok && statement.ok);
        QVERIFY(service.regenerate(annual.docId).ok);
        QVERIFY(service.deleteDocument(statement.docId).ok);
        QCOMPARE(row(u"SELECT COUNT(*) FROM transactions WHERE risk_evaluated_at IS NOT NULL"_s),
            u"0"_s);
    }

    void regeneratingTakesTheNewProfile()
    {
        const auto result
            = DocumentService().generateIndependenceStatement(DocumentSamples::independenceInput());
        const auto before = DocumentDao().findById(result.docId);
        CompanyProfile company = DocumentSamples::company();
        company.companyName = u"杭州新名设计有限公司"_s;
        QVERIFY(ProfileDao().save(company));
        const QByteArray pdf = TestFile::bytesOf(result.filePath);

        const auto again = DocumentService().regenerate(result.docId);
        QVERIFY2(again.ok, qUtf8Printable(again.error));
        QCOMPARE(again.docNo, result.docNo);
        QCOMPARE(again.filePath, result.filePath);
        QVERIFY(TestFile::bytesOf(result.filePath) != pdf);
        QCOMPARE(exportedFiles().size(), 1);
        auto after = DocumentDao().findById(result.docId);
        QVERIFY(after->contentHtml.contains(u"声明人作为 杭州新名设计有限公司"_s));
        QVERIFY(after->contentHtml.contains(u"（六）其他独立性措施"_s));
        QCOMPARE(after->title, before->title);
        QCOMPARE(after->docDate, before->docDate);
    }

    void regeneratingNeedsItsEntries()
    {
        const QList<qint64> ids = DocumentSamples::storeEntries(2);
        const auto result = DocumentService().generateFundDecision(fundInput(ids));
        QVERIFY(TransactionDao().remove(ids[1]));
        const QStringList before = TestDatabase::dump();
        const QByteArray pdf = TestFile::bytesOf(result.filePath);
        QCOMPARE(DocumentService().regenerate(result.docId).error,
            u"流水 #%1 不存在，请刷新后重试。"_s.arg(ids[1]));
        QCOMPARE(TestDatabase::dump(), before);
        QCOMPARE(TestFile::bytesOf(result.filePath), pdf);
    }

    void missingDocumentsAreReported()
    {
        QCOMPARE(DocumentService().regenerate(5).error, u"文书记录不存在。"_s);
        QCOMPARE(DocumentService().deleteDocument(5).error, u"文书记录不存在。"_s);
        QCOMPARE(DocumentService().restoreFile(5).error, u"文书记录不存在。"_s);
    }

    void aReadThatFailsIsNotTakenForAMissingDocument()
    {
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE documents RENAME TO hidden"_s }), QString());
        expectWarnings(QStringList(3, u"SQL error: no such table: documents"_s));
        DocumentService service;
        for (const DocumentResult& result :
            { service.regenerate(1), service.deleteDocument(1), service.restoreFile(1) })
            QVERIFY2(
                result.error.startsWith(u"文书记录读取失败："_s), qUtf8Printable(result.error));
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE hidden RENAME TO documents"_s }), QString());
    }
};

static const RegisteredTest<TestDocumentService> registered;

#include "TestDocumentService.moc"
