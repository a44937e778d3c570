#include "db/DocumentDao.h"
#include "db/Stored.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"

using namespace Qt::StringLiterals;
using Stored::idsOf;

namespace {

qint64 add(const QString& number, DocType type = DocType::AnnualDecision, int year = 0)
{
    return Stored::add<DocumentDao>(DocumentRecord {
        .docType = type, .docNo = number, .docYear = year, .docDate = QDate(2025, 1, 1) });
}

} // namespace

class TestDocumentDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void documentsComeNewestFirst()
    {
        QVERIFY(add(u"a"_s, DocType::FundDecision) && add(u"b"_s, DocType::AnnualDecision)
            && add(u"c"_s, DocType::FundDecision) && add(u"d"_s, DocType::IndependenceStatement));
        QCOMPARE(idsOf(DocumentDao().list()), (QList<qint64> { 4, 3, 2, 1 }));
        QCOMPARE(idsOf(DocumentDao().list(DocType::FundDecision)), (QList<qint64> { 3, 1 }));
    }

    void listsMayLeaveTheContentOut()
    {
        const DocumentRecord document = Stored::wholeDocument();
        Stored::add<DocumentDao>(document);
        DocumentRecord listed = DocumentDao().listWithoutContent().value(0);
        QVERIFY(listed.contentHtml.isEmpty());
        listed.contentHtml = document.contentHtml;
        const DocumentRecord stored = DocumentDao().findById(listed.id).value();
        const auto textsOf = [](const DocumentRecord& record) {
            return QStringList { codeOf(record.docType), record.docNo, record.title,
                QString::number(record.docYear), record.docDate.toString(),
                codeOf(record.fundDirection.value()), record.fundNature,
                record.settleDate.toString(), record.extraText, record.selectedItems,
                record.contentHtml, record.filePath, record.createdAt };
        };
        QCOMPARE(textsOf(listed), textsOf(stored));
    }

    void onlyAnnualDecisionsCountForTheYear()
    {
        QVERIFY(add(u"a"_s, DocType::FundDecision, 2025));
        QVERIFY(!DocumentDao().existsAnnualForYear(2025));
        QVERIFY(add(u"b"_s, DocType::AnnualDecision, 2025));
        QVERIFY(DocumentDao().existsAnnualForYear(2025));
        QVERIFY(!DocumentDao().existsAnnualForYear(2024));
    }

    void numbersFollowTheHighestOfKindAndYear()
    {
        using enum DocType;
        for (const QString& number : { u"KYR-FD-2025-0003"_s, u"KYR-FD-2025-0001"_s,
                 u"KYR-ND-2025-0011"_s, u"KYR-ND-2020--500"_s })
            QVERIFY(add(number));
        DocumentDao documents;
        QCOMPARE(documents.nextDocNo(FundDecision, 2025), u"KYR-FD-2025-0004"_s);
        QCOMPARE(documents.nextDocNo(FundDecision, 2026), u"KYR-FD-2026-0001"_s);
        QCOMPARE(documents.nextDocNo(IndependenceStatement, 2025), u"KYR-DC-2025-0001"_s);
        QCOMPARE(documents.nextDocNo(AnnualDecision, 2025), u"KYR-ND-2025-0012"_s);
        QCOMPARE(documents.nextDocNo(AnnualDecision, 2020), u"KYR-ND-2020-0001"_s);
        QCOMPARE(documents.nextDocNo(static_cast<DocType>(9), 2025), u"KYR-XX-2025-0001"_s);
    }

    void numberingStaysSilent()
    {
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE documents RENAME TO hidden"_s }), QString());
        // Any log line would fail this test.
        QCOMPARE(DocumentDao().nextDocNo(DocType::AnnualDecision, 2025), u"KYR-ND-2025-0001"_s);
    }

    void theContentIsReplacedAlone()
    {
        QVERIFY(add(u"a"_s) && add(u"b"_s));
        QVERIFY(DocumentDao().updateContent(1, u"<p>新</p>"_s));
        QCOMPARE(TestDatabase::rows(u"SELECT doc_no, content_html FROM documents ORDER BY id"_s),
            (QStringList { u"a|<p>新</p>"_s, u"b|"_s }));
    }
};

static const RegisteredTest<TestDocumentDao> registered;

#include "TestDocumentDao.moc"
