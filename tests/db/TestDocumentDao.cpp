#include "db/TestDocumentDao.h"

#include "db/DocumentDao.h"
#include "support/TestDatabase.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using TestDatabase::row;

Q_DECLARE_METATYPE(std::optional<DocType>)

namespace {

DocumentRecord distinctDocument()
{
    return { .docType = DocType::FundDecision,
        .docNo = u"KYR-FD-2025-0001"_s,
        .title = u"标题"_s,
        .docYear = 2024,
        .docDate = QDate(2025, 1, 2),
        .fundDirection = Direction::Out,
        .fundNature = u" 借款 "_s,
        .settleDate = QDate(2025, 12, 31),
        .extraText = u"补充"_s,
        .selectedItems = u"[1,2]"_s,
        .contentHtml = u"<p>正文</p>"_s,
        .filePath = u"/data/exports/a.pdf"_s };
}

bool add(const QString& number, DocType type = DocType::AnnualDecision, int year = 0)
{
    DocumentRecord document {
        .docType = type, .docNo = number, .docYear = year, .docDate = QDate(2025, 1, 1)
    };
    return DocumentDao().insert(document);
}

} // namespace

void TestDocumentDao::everyFieldIsStored()
{
    QVERIFY(add(u"another"_s));
    DocumentRecord document = distinctDocument();
    QVERIFY(DocumentDao().insert(document));
    QCOMPARE(document.id, qint64 { 2 });
    QCOMPARE(row(u"SELECT doc_type, doc_no, title, doc_year, doc_date, fund_direction, "
                 "fund_nature, settle_date, extra_text, selected_items, content_html, file_path "
                 "FROM documents WHERE id = 2"_s),
        u"fund_decision|KYR-FD-2025-0001|标题|2024|2025-01-02|out| 借款 "
        "|2025-12-31|补充|[1,2]|<p>正文</p>|/data/exports/a.pdf"_s);

    const auto stored = DocumentDao().findById(2);
    QVERIFY(stored);
    QCOMPARE(stored->id, qint64 { 2 });
    QCOMPARE(stored->docType, document.docType);
    QCOMPARE(stored->docNo, document.docNo);
    QCOMPARE(stored->title, document.title);
    QCOMPARE(stored->docYear, document.docYear);
    QCOMPARE(stored->docDate, document.docDate);
    QCOMPARE(stored->fundDirection, document.fundDirection);
    QCOMPARE(stored->fundNature, document.fundNature);
    QCOMPARE(stored->settleDate, document.settleDate);
    QCOMPARE(stored->extraText, document.extraText);
    QCOMPARE(stored->selectedItems, document.selectedItems);
    QCOMPARE(stored->contentHtml, document.contentHtml);
    QCOMPARE(stored->filePath, document.filePath);
    QCOMPARE(stored->createdAt, row(u"SELECT created_at FROM documents WHERE id = 2"_s));
    QVERIFY(!DocumentDao().findById(3));
}

void TestDocumentDao::unsetPartsAreStoredAsNull()
{
    DocumentRecord document {
        .docNo = u"n"_s, .docDate = QDate(2025, 1, 1), .fundNature = u" 　"_s, .extraText = u"\n"_s
    };
    QVERIFY(DocumentDao().insert(document));
    QCOMPARE(row(u"SELECT title, doc_year, fund_direction, fund_nature, settle_date, extra_text, "
                 "selected_items, content_html, file_path FROM documents"_s),
        u"|∅|∅|∅|∅|∅|∅||"_s);
    const auto stored = DocumentDao().findById(1);
    QCOMPARE(stored->docYear, 0);
    QVERIFY(!stored->fundDirection && !stored->settleDate.isValid());
    QCOMPARE(stored->fundNature, QString());

    document.docNo = u"m"_s;
    document.fundDirection = Direction::In;
    QVERIFY(DocumentDao().insert(document));
    QCOMPARE(row(u"SELECT fund_direction FROM documents WHERE id = 2"_s), u"in"_s);
}

void TestDocumentDao::documentsComeNewestFirst_data()
{
    QTest::addColumn<std::optional<DocType>>("type");
    QTest::addColumn<QStringList>("numbers");
    QTest::newRow("all kinds") << std::optional<DocType>()
                               << QStringList { u"d"_s, u"c"_s, u"b"_s, u"a"_s };
    QTest::newRow("one kind") << std::optional(DocType::FundDecision)
                              << QStringList { u"c"_s, u"a"_s };
}

void TestDocumentDao::documentsComeNewestFirst()
{
    QFETCH(std::optional<DocType>, type);
    QVERIFY(add(u"a"_s, DocType::FundDecision) && add(u"b"_s, DocType::AnnualDecision)
        && add(u"c"_s, DocType::FundDecision) && add(u"d"_s, DocType::IndependenceStatement));
    QStringList numbers;
    for (const DocumentRecord& document : DocumentDao().list(type))
        numbers += document.docNo;
    QTEST(numbers, "numbers");
}

void TestDocumentDao::onlyAnnualDecisionsCountForTheYear()
{
    QVERIFY(add(u"a"_s, DocType::FundDecision, 2025));
    QVERIFY(!DocumentDao().existsAnnualForYear(2025));
    QVERIFY(add(u"b"_s, DocType::AnnualDecision, 2025));
    QVERIFY(DocumentDao().existsAnnualForYear(2025));
    QVERIFY(!DocumentDao().existsAnnualForYear(2024));
}

void TestDocumentDao::numbersFollowTheHighestOfKindAndYear_data()
{
    QTest::addColumn<DocType>("type");
    QTest::addColumn<int>("year");
    QTest::addColumn<QString>("number");
    QTest::newRow("a number left out stays free")
        << DocType::FundDecision << 2025 << u"KYR-FD-2025-0004"_s;
    QTest::newRow("another year") << DocType::FundDecision << 2026 << u"KYR-FD-2026-0001"_s;
    QTest::newRow("another kind") << DocType::IndependenceStatement << 2025
                                  << u"KYR-DC-2025-0001"_s;
    QTest::newRow("two digits") << DocType::AnnualDecision << 2025 << u"KYR-ND-2025-0012"_s;
    QTest::newRow("a number below one") << DocType::AnnualDecision << 2020 << u"KYR-ND-2020-0001"_s;
    QTest::newRow("no kind") << static_cast<DocType>(9) << 2025 << u"KYR-XX-2025-0001"_s;
}

void TestDocumentDao::numbersFollowTheHighestOfKindAndYear()
{
    QFETCH(DocType, type);
    QFETCH(int, year);
    for (const QString& number : { u"KYR-FD-2025-0003"_s, u"KYR-FD-2025-0001"_s,
             u"KYR-ND-2025-0011"_s, u"KYR-ND-2020--500"_s })
        QVERIFY(add(number));
    QTEST(DocumentDao().nextDocNo(type, year), "number");
}

void TestDocumentDao::aFreedNumberIsUsedAgain()
{
    QVERIFY(add(u"KYR-ND-2025-0001"_s) && add(u"KYR-ND-2025-0002"_s));
    QVERIFY(DocumentDao().remove(2));
    QCOMPARE(DocumentDao().nextDocNo(DocType::AnnualDecision, 2025), u"KYR-ND-2025-0002"_s);
}

void TestDocumentDao::numberingStaysSilent()
{
    QCOMPARE(TestDatabase::run({ u"ALTER TABLE documents RENAME TO hidden"_s }), QString());
    // Any log line would fail this test.
    QCOMPARE(DocumentDao().nextDocNo(DocType::AnnualDecision, 2025), u"KYR-ND-2025-0001"_s);
}

void TestDocumentDao::aTakenNumberIsRefused()
{
    QVERIFY(add(u"KYR-ND-2025-0001"_s));
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(u"UNIQUE constraint failed: documents.doc_no"_s));
    QVERIFY(!add(u"KYR-ND-2025-0001"_s));
}

void TestDocumentDao::theContentIsReplacedAlone()
{
    QVERIFY(add(u"a"_s) && add(u"b"_s));
    QVERIFY(DocumentDao().updateContent(1, u"<p>新</p>"_s));
    QCOMPARE(TestDatabase::rows(u"SELECT doc_no, content_html FROM documents ORDER BY id"_s),
        (QStringList { u"a|<p>新</p>"_s, u"b|"_s }));
}
