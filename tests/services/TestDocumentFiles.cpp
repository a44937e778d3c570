#include "services/TestDocumentFiles.h"

#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/DocumentDao.h"
#include "services/documents/DocumentFiles.h"
#include "services/documents/DocumentService.h"
#include "services/DocumentSamples.h"
#include "support/FileSizeLimit.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QRegularExpression>

#include <memory>

using namespace Qt::StringLiterals;
using DocumentSamples::fundInput;
using TestDatabase::row;
using TestFile::bytesOf;

namespace {

const QString fundName = u"KYR-FD-2025-0001_公私资金往来决定书.pdf"_s;

QString fundPath()
{
    return AppPaths::exportsDir() + u'/' + fundName;
}

QString cannotWrite()
{
    return u"无法打开 PDF 输出文件："_s + fundPath();
}

// Names and contents of the exports folder.
QMap<QString, QByteArray> exportsContent()
{
    QMap<QString, QByteArray> content;
    const QDir folder(AppPaths::exportsDir());
    for (const QString& name :
        folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        content.insert(name, bytesOf(folder.filePath(name)));
    return content;
}

bool put(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

DocumentResult generateFund()
{
    return DocumentService().generateFundDecision(fundInput({ 1, 2 }));
}

/// A way in which a step fails, how it is brought about and undone.
struct Fault {
    QString trigger; // SQL, may be empty
    bool deferred = false; // the commit fails on a foreign key
    bool fullDisk = false;
    QString folderAt; // a folder in the place of this file
    bool fileAtExports = false;
    QList<QByteArray> warnings; // patterns of what is logged
    QString error; // a pattern
};

// Keeps the fault up for as long as it lives.
class Faulty final {
public:
    explicit Faulty(const Fault& fault)
        : m_fault(fault)
    {
        for (const QByteArray& warning : fault.warnings)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromUtf8(warning)));
        if (!fault.trigger.isEmpty())
            m_problem = TestDatabase::run({ u"CREATE TRIGGER fault "_s + fault.trigger });
        if (fault.fullDisk)
            m_limit = std::make_unique<FileSizeLimit>(8192);
        if (!fault.folderAt.isEmpty())
            QDir().mkpath(fault.folderAt);
        if (fault.fileAtExports) {
            QDir().rename(AppPaths::exportsDir(), AppPaths::exportsDir() + u".away"_s);
            put(AppPaths::exportsDir(), "in the way");
        }
    }
    ~Faulty()
    {
        m_limit.reset();
        if (!m_fault.trigger.isEmpty())
            TestDatabase::run({ u"DROP TRIGGER fault"_s });
        if (!m_fault.folderAt.isEmpty())
            QDir().rmdir(m_fault.folderAt);
        if (m_fault.fileAtExports) {
            QFile::remove(AppPaths::exportsDir());
            QDir().rename(AppPaths::exportsDir() + u".away"_s, AppPaths::exportsDir());
        }
    }
    Faulty(const Faulty&) = delete;
    Faulty& operator=(const Faulty&) = delete;
    QString problem() const { return m_problem; }

private:
    Fault m_fault;
    QString m_problem;
    std::unique_ptr<FileSizeLimit> m_limit;
};

const QString abortion = u" BEGIN SELECT RAISE(ABORT, 'forced'); END"_s;

// A row that refers to nothing is only refused when the transaction is committed.
QString deferredTrigger(const QString& event)
{
    return event + u" BEGIN INSERT INTO later VALUES (99); END"_s;
}

Fault sqlFault(const QString& trigger)
{
    return {
        .trigger = trigger + abortion, .warnings = { "SQL error: .*forced" }, .error = u"forced"_s
    };
}

Fault commitFault(const QString& event)
{
    return { .trigger = deferredTrigger(event),
        .warnings = { "Transaction commit failed: " },
        .error = u"^事务提交失败。$"_s };
}

Fault exportsIsAFile()
{
    return { .fileAtExports = true,
        .error = u"^无法创建导出目录：%1$"_s.arg(AppPaths::exportsDir()) };
}

QString exactly(const QString& text)
{
    return QRegularExpression::anchoredPattern(QRegularExpression::escape(text));
}

Fault fullDisk()
{
    return { .fullDisk = true, .error = exactly(cannotWrite()) };
}

} // namespace

Q_DECLARE_METATYPE(Fault)

void TestDocumentFiles::init()
{
    DatabaseTestCase::init();
    QVERIFY(DocumentSamples::storeCompany());
    QCOMPARE(DocumentSamples::storeEntries(2), (QList<qint64> { 1, 2 }));
    QCOMPARE(TestDatabase::run({ u"CREATE TABLE later (id INTEGER REFERENCES projects (id) "
                                 "DEFERRABLE INITIALLY DEFERRED)"_s }),
        QString());
}

void TestDocumentFiles::failedGenerationLeavesNothing_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("the row") << sqlFault(u"BEFORE INSERT ON documents"_s);
    QTest::newRow("the second link")
        << sqlFault(u"BEFORE INSERT ON entity_links WHEN NEW.target_id = 2"_s);
    QTest::newRow("the row, with all that was open") << Fault { .trigger
        = u"BEFORE INSERT ON documents BEGIN SELECT RAISE(ROLLBACK, 'forced'); END"_s,
        .warnings = { "SQL error: .*forced", "Transaction rollback failed: " },
        .error = u"forced"_s };
    QTest::newRow("the commit") << commitFault(u"AFTER INSERT ON documents"_s);
    QTest::newRow("the exports folder") << exportsIsAFile();
    QTest::newRow("a folder in the place of the PDF")
        << Fault { .folderAt = fundPath(), .error = exactly(cannotWrite()) };
    QTest::newRow("the disk") << fullDisk();
}

void TestDocumentFiles::failedGenerationLeavesNothing()
{
    QFETCH(Fault, fault);
    const QStringList before = TestDatabase::dump();
    {
        const Faulty faulty(fault);
        QCOMPARE(faulty.problem(), QString());
        const DocumentResult result = generateFund();
        QVERIFY(!result.ok);
        QCOMPARE(result.docId, 0);
        QVERIFY2(
            result.error.contains(QRegularExpression(fault.error)), qUtf8Printable(result.error));
    }
    QCOMPARE(TestDatabase::dump().filter(u"documents: "_s), before.filter(u"documents: "_s));
    QCOMPARE(row(u"SELECT COUNT(*) FROM entity_links"_s), u"0"_s);
    QVERIFY2(exportsContent().isEmpty(), qUtf8Printable(exportsContent().keys().join(u' ')));
    // The next attempt works and takes the same number.
    const DocumentResult result = generateFund();
    QVERIFY2(result.ok, qUtf8Printable(result.error));
    QCOMPARE(result.docNo, u"KYR-FD-2025-0001"_s);
    QCOMPARE(exportsContent().keys(), QStringList { fundName });
}

void TestDocumentFiles::failedRegenerationKeepsTheOldPdf_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("the row") << sqlFault(u"BEFORE UPDATE ON documents"_s);
    QTest::newRow("the commit") << commitFault(u"AFTER UPDATE ON documents"_s);
    QTest::newRow("the exports folder") << exportsIsAFile();
    QTest::newRow("the disk") << fullDisk();
}

void TestDocumentFiles::failedRegenerationKeepsTheOldPdf()
{
    QFETCH(Fault, fault);
    const DocumentResult result = generateFund();
    QVERIFY(result.ok);
    QCOMPARE(TestDatabase::run({ u"UPDATE transactions SET summary = '改过的摘要'"_s }), QString());
    const auto files = exportsContent();
    const QString html = DocumentDao().findById(result.docId)->contentHtml;
    {
        const Faulty faulty(fault);
        QCOMPARE(faulty.problem(), QString());
        const DocumentResult again = DocumentService().regenerate(result.docId);
        QVERIFY(!again.ok);
        QVERIFY2(
            again.error.contains(QRegularExpression(fault.error)), qUtf8Printable(again.error));
    }
    QCOMPARE(DocumentDao().findById(result.docId)->contentHtml, html);
    QVERIFY(exportsContent() == files);
    QVERIFY(DocumentService().regenerate(result.docId).ok);
    QCOMPARE(exportsContent().keys(), QStringList { fundName });
    QVERIFY(exportsContent() != files);
}

void TestDocumentFiles::failedDeletionKeepsEverything_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("the links") << sqlFault(u"BEFORE DELETE ON entity_links"_s);
    QTest::newRow("the row") << sqlFault(u"BEFORE DELETE ON documents"_s);
    QTest::newRow("the commit") << commitFault(u"AFTER DELETE ON documents"_s);
}

void TestDocumentFiles::failedDeletionKeepsEverything()
{
    QFETCH(Fault, fault);
    const DocumentResult result = generateFund();
    const auto files = exportsContent();
    {
        const Faulty faulty(fault);
        QCOMPARE(faulty.problem(), QString());
        const DocumentResult deleted = DocumentService().deleteDocument(result.docId);
        QVERIFY(!deleted.ok);
        QVERIFY2(
            deleted.error.contains(QRegularExpression(fault.error)), qUtf8Printable(deleted.error));
    }
    QCOMPARE(row(u"SELECT COUNT(*) FROM documents"_s), u"1"_s);
    QCOMPARE(row(u"SELECT COUNT(*) FROM entity_links"_s), u"2"_s);
    QVERIFY(exportsContent() == files);
    QVERIFY(DocumentService().deleteDocument(result.docId).ok);
    QVERIFY(exportsContent().isEmpty());
}

void TestDocumentFiles::aClosedDatabaseIsReported()
{
    DatabaseManager::instance().close();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"SQL error: .*company_profile"_s));
    const DocumentResult result = generateFund();
    QVERIFY(!result.ok);
    QCOMPARE(result.error, u"数据库未打开"_s);
    QVERIFY(exportsContent().isEmpty());
}

void TestDocumentFiles::aTransactionThatCannotBeginIsReported()
{
    const DocumentResult result = generateFund();
    QVERIFY(result.ok);
    const auto files = exportsContent();
    // Begun past the guards, so that none of them can begin.
    QCOMPARE(TestDatabase::run({ u"BEGIN"_s }), QString());
    DocumentService service;
    const QString error = u"无法开启数据库事务。"_s;
    QCOMPARE(generateFund().error, error);
    QCOMPARE(service.regenerate(result.docId).error, error);
    QCOMPARE(service.deleteDocument(result.docId).error, error);
    QCOMPARE(TestDatabase::run({ u"ROLLBACK"_s }), QString());
    QVERIFY(exportsContent() == files);
    QCOMPARE(row(u"SELECT COUNT(*) FROM documents"_s), u"1"_s);
}

void TestDocumentFiles::aFileWithoutARowIsPutAside()
{
    QVERIFY(put(fundPath(), "signed and scanned"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"put aside: .*_旧_"_s));
    const DocumentResult result = generateFund();
    QVERIFY2(result.ok, qUtf8Printable(result.error));
    QVERIFY(bytesOf(result.filePath).startsWith("%PDF-"));
    const QStringList aside = DocumentFiles::filesWithoutRow();
    QCOMPARE(aside.size(), 1);
    QVERIFY(aside.first().contains(u"KYR-FD-2025-0001_公私资金往来决定书_旧_"_s));
    QCOMPARE(bytesOf(aside.first()), QByteArray("signed and scanned"));
}

void TestDocumentFiles::aFailureBringsTheFileWithoutARowBack()
{
    QVERIFY(put(fundPath(), "signed and scanned"));
    {
        const Faulty faulty(commitFault(u"AFTER INSERT ON documents"_s));
        QVERIFY(!generateFund().ok);
    }
    QCOMPARE(exportsContent().keys(), QStringList { fundName });
    QCOMPARE(bytesOf(fundPath()), QByteArray("signed and scanned"));
}

void TestDocumentFiles::anotherDocumentsFileIsPutAsideOnRegenerating_data()
{
    QTest::addColumn<bool>("scanned");
    QTest::newRow("a document of the same number, whose row a restore took away") << false;
    QTest::newRow("a signed copy, scanned over the PDF") << true;
}

void TestDocumentFiles::anotherDocumentsFileIsPutAsideOnRegenerating()
{
    QFETCH(bool, scanned);
    const DocumentResult result = generateFund();
    QVERIFY(result.ok);
    DocumentRecord restored = *DocumentDao().findById(result.docId);
    if (scanned) {
        QVERIFY(put(fundPath(), "%PDF-1.4 signed and scanned"));
    } else {
        QVERIFY(DocumentService().deleteDocument(result.docId).ok);
        FundDecisionInput later = fundInput({ 1 });
        later.fundNature = u"另一笔往来"_s;
        QCOMPARE(DocumentService().generateFundDecision(later).docNo, result.docNo);
        QCOMPARE(TestDatabase::run({ u"DELETE FROM entity_links"_s, u"DELETE FROM documents"_s }),
            QString());
        QVERIFY(DocumentDao().insert(restored));
    }
    const QByteArray others = bytesOf(fundPath());
    const qint64 id = row(u"SELECT id FROM documents"_s).toLongLong();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"put aside: .*_旧_"_s));
    const DocumentResult again = DocumentService().regenerate(id);
    QVERIFY2(again.ok, qUtf8Printable(again.error));
    QVERIFY(bytesOf(fundPath()) != others);
    const QStringList aside = DocumentFiles::filesWithoutRow();
    QCOMPARE(aside.size(), 1);
    QCOMPARE(bytesOf(aside.first()), others);
    // From now on the file is this document's.
    QVERIFY(DocumentService().regenerate(id).ok);
    QCOMPARE(exportsContent().size(), 2);
}

void TestDocumentFiles::aSignedCopyOutlivesItsDocument()
{
    const DocumentResult result = generateFund();
    QVERIFY(put(fundPath(), "%PDF-1.4 signed and scanned"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"put aside: .*_旧_"_s));
    QVERIFY(DocumentService().deleteDocument(result.docId).ok);
    QCOMPARE(row(u"SELECT COUNT(*) FROM documents"_s), u"0"_s);
    QCOMPARE(exportsContent().values(), QList<QByteArray> { "%PDF-1.4 signed and scanned" });
    QVERIFY(exportsContent().firstKey().contains(u"_旧_"_s));
}

void TestDocumentFiles::filesOfOtherRowsAreNeverTouched()
{
    // Another document claims the very file that the next one would be written to.
    DocumentRecord other { .docNo = u"KYR-XX-1"_s,
        .docDate = QDate(2025, 1, 1),
        .selectedItems = u"[\"甲\"]"_s,
        .filePath = fundPath() };
    QVERIFY(DocumentDao().insert(other));
    QVERIFY(put(fundPath(), "the other's"));
    const QString taken = u"该文件属于另一份文书，未作任何改动：%1"_s.arg(fundPath());
    QCOMPARE(generateFund().error, taken);
    QCOMPARE(row(u"SELECT COUNT(*) FROM documents"_s), u"1"_s);

    DocumentRecord twin = other;
    twin.docNo = u"KYR-XX-2"_s;
    QVERIFY(DocumentDao().insert(twin));
    QCOMPARE(DocumentService().regenerate(twin.id).error, taken);
    QVERIFY(DocumentService().deleteDocument(twin.id).ok);
    QCOMPARE(exportsContent().keys(), QStringList { fundName });
    QCOMPARE(bytesOf(fundPath()), QByteArray("the other's"));
}

void TestDocumentFiles::aFolderAtThePlaceOfThePdfIsLeftAlone()
{
    const DocumentResult result = generateFund();
    QVERIFY(QFile::remove(fundPath()) && QDir().mkpath(fundPath()));
    QCOMPARE(DocumentService().regenerate(result.docId).error, cannotWrite());
    QCOMPARE(DocumentService().restoreFile(result.docId).error, cannotWrite());
    QVERIFY(DocumentService().deleteDocument(result.docId).ok);
    QVERIFY(QFileInfo(fundPath()).isDir());
}

void TestDocumentFiles::leftoversOfACrashAreReportedAndLeftAlone()
{
    QVERIFY(put(fundPath() + u".new"_s, "half"));
    QVERIFY(put(fundPath() + u".old"_s, "former"));
    const DocumentResult result = generateFund();
    QVERIFY(result.ok);
    QVERIFY(DocumentService().regenerate(result.docId).ok);
    QCOMPARE(bytesOf(fundPath() + u".new"_s), QByteArray("half"));
    QCOMPARE(bytesOf(fundPath() + u".old"_s), QByteArray("former"));
    QCOMPARE(exportsContent().size(), 3);
    QCOMPARE(DocumentFiles::filesWithoutRow(),
        (QStringList { fundPath() + u".new"_s, fundPath() + u".old"_s }));
}

void TestDocumentFiles::anInterruptedRegenerationIsUndone_data()
{
    // What lies at the PDF's place, and whether the former file takes it.
    QTest::addColumn<bool>("formerIsScan");
    QTest::addColumn<QString>("inPlace");
    QTest::addColumn<bool>("undone");
    QTest::newRow("before the row was committed") << false << u"new"_s << true;
    QTest::newRow("the same over a signed copy") << true << u"new"_s << true;
    QTest::newRow("after the commit, over a signed copy") << true << u"committed"_s << false;
    QTest::newRow("and the PDF is gone") << false << u"nothing"_s << true;
    QTest::newRow("before the PDF was replaced") << false << u"former"_s << false;
    QTest::newRow("after the commit") << false << u"committed"_s << false;
    QTest::newRow("and a signed copy was scanned over it since") << false << u"scan"_s << false;
}

void TestDocumentFiles::anInterruptedRegenerationIsUndone()
{
    QFETCH(bool, formerIsScan);
    QFETCH(QString, inPlace);
    QFETCH(bool, undone);
    const DocumentResult result = generateFund();
    const QByteArray former = formerIsScan ? "%PDF-1.4 signed" : bytesOf(fundPath());
    const QString html = DocumentDao().findById(result.docId)->contentHtml;
    QCOMPARE(TestDatabase::run({ u"UPDATE transactions SET summary = '改过的摘要'"_s }), QString());
    QVERIFY(DocumentService().regenerate(result.docId).ok);
    QVERIFY(put(fundPath() + u"_2.old"_s, former));
    if (inPlace != u"committed"_s)
        QVERIFY(DocumentDao().updateContent(result.docId, html));
    if (inPlace == u"scan"_s)
        QVERIFY(put(fundPath(), "%PDF-1.4 signed"));
    else if (inPlace == u"former"_s)
        QVERIFY(put(fundPath(), former));
    else if (inPlace == u"nothing"_s)
        QVERIFY(QFile::remove(fundPath()));
    const auto before = exportsContent();

    if (inPlace == u"new"_s)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"put aside: .*_旧_"_s));
    DocumentFiles::repair();
    QCOMPARE(exportsContent() == before, !undone);
    if (!undone)
        return;
    QCOMPARE(bytesOf(fundPath()), former);
    // The former PDF is no leftover any more; the new one is kept.
    QCOMPARE(exportsContent().size(), inPlace == u"new"_s ? 2 : 1);
    QVERIFY(inPlace != u"new"_s
        || bytesOf(DocumentFiles::filesWithoutRow().value(0)) == before.value(fundName));
}

void TestDocumentFiles::aMissingExportsFolderIsMade()
{
    QVERIFY(QDir(AppPaths::exportsDir()).removeRecursively());
    QVERIFY(generateFund().ok);
    QVERIFY(QFile::exists(fundPath()));
}

void TestDocumentFiles::theOwnFileComesFirst()
{
    const QTemporaryDir elsewhere;
    DocumentRecord record { .docNo = u"N"_s, .filePath = elsewhere.filePath(u"a.pdf"_s) };
    const QString own = AppPaths::exportsDir() + u"/a.pdf"_s;
    QCOMPARE(DocumentFiles::documentFile(record), own);
    QVERIFY(!DocumentFiles::isThere(record));
    QVERIFY(put(record.filePath, "stored"));
    QCOMPARE(DocumentFiles::documentFile(record), record.filePath);
    QVERIFY(DocumentFiles::isThere(record));
    QVERIFY(put(own, "own"));
    QCOMPARE(DocumentFiles::documentFile(record), own);
}

void TestDocumentFiles::aCopyNeverTouchesTheOriginal()
{
    // The rows of a copied data directory name the files of the original.
    const QTemporaryDir original;
    const DocumentResult result = generateFund();
    const QString there = original.filePath(fundName);
    QVERIFY(QFile::copy(fundPath(), there));
    const QByteArray bytes = bytesOf(there);
    QCOMPARE(
        TestDatabase::run({ u"UPDATE documents SET file_path = '%1'"_s.arg(there) }), QString());

    DocumentService service;
    QCOMPARE(service.regenerate(result.docId).filePath, fundPath());
    QVERIFY(QFile::remove(fundPath()));
    QCOMPARE(service.regenerate(result.docId).filePath, fundPath());
    QVERIFY(QFile::exists(fundPath()));
    QVERIFY(service.deleteDocument(result.docId).ok);
    QVERIFY(!QFile::exists(fundPath()));
    QCOMPARE(bytesOf(there), bytes);
}

void TestDocumentFiles::pathsOfOtherSystemsAreUnderstood_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("name");
    QTest::newRow("Windows") << u"D:\\Brixa\\data\\exports\\a.pdf"_s << u"a.pdf"_s;
    QTest::newRow("Unix") << u"/opt/brixa/data/exports/a.pdf"_s << u"a.pdf"_s;
    QTest::newRow("nothing stored") << QString() << fundName;
    QTest::newRow("a folder") << u"/opt/brixa/.."_s << fundName;
}

void TestDocumentFiles::pathsOfOtherSystemsAreUnderstood()
{
    QFETCH(QString, stored);
    QFETCH(QString, name);
    const DocumentRecord record {
        .docType = DocType::FundDecision, .docNo = u"KYR-FD-2025-0001"_s, .filePath = stored
    };
    QCOMPARE(DocumentFiles::documentFile(record), AppPaths::exportsDir() + u'/' + name);
}

void TestDocumentFiles::aMissingPdfIsWrittenAgain()
{
    const DocumentResult result = generateFund();
    const QByteArray before = bytesOf(fundPath());
    QCOMPARE(DocumentService().restoreFile(result.docId).filePath, fundPath());
    QCOMPARE(bytesOf(fundPath()), before);

    // From the stored page, not from what the ledger says now.
    QCOMPARE(TestDatabase::run({ u"DELETE FROM transactions"_s }), QString());
    QVERIFY(QFile::remove(fundPath()));
    const DocumentResult restored = DocumentService().restoreFile(result.docId);
    QVERIFY2(restored.ok, qUtf8Printable(restored.error));
    QVERIFY(bytesOf(fundPath()).startsWith("%PDF-"));
}

void TestDocumentFiles::filesWithoutRowsAreReported()
{
    QVERIFY(generateFund().ok);
    const QDir folder(AppPaths::exportsDir());
    QVERIFY(put(folder.filePath(u"乙.pdf"_s), "b") && put(folder.filePath(u"甲.PDF"_s), "a"));
    QVERIFY(put(folder.filePath(u"流水.csv"_s), "c"));
    QCOMPARE(DocumentFiles::filesWithoutRow(),
        (QStringList { folder.filePath(u"乙.pdf"_s), folder.filePath(u"甲.PDF"_s) }));
    QCOMPARE(exportsContent().size(), 4);
}
