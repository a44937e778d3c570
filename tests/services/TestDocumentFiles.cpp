#include "core/AppPaths.h"
#include "db/DocumentDao.h"
#include "services/documents/DocumentFiles.h"
#include "services/documents/DocumentService.h"
#include "services/DocumentSamples.h"
#include "services/FundDecisionFile.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/Warnings.h"

#include <QDir>

using namespace Qt::StringLiterals;
using namespace FundDecisionFile;
using TestDatabase::row;
using TestFile::bytesOf;
using TestFile::put;

/// Which file is a document's own, and that no other is ever touched.
class TestDocumentFiles final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        QVERIFY(storeLedger());
    }

    void aFileWithoutARowIsPutAside()
    {
        QVERIFY(put(fundPath(), "signed and scanned"));
        expectWarnings({ u".*put aside: .*_旧_"_s });
        const DocumentResult result = generateFund();
        QVERIFY2(result.ok, qUtf8Printable(result.error));
        QVERIFY(bytesOf(result.filePath).startsWith("%PDF-"));
        const QStringList aside = DocumentFiles::filesWithoutRow();
        QCOMPARE(aside.size(), 1);
        QVERIFY(aside.first().contains(u"KYR-FD-2025-0001_公私资金往来决定书_旧_"_s));
        QCOMPARE(bytesOf(aside.first()), QByteArray("signed and scanned"));
    }

    void anotherDocumentsFileIsPutAsideOnRegenerating_data()
    {
        addColumns<bool>("scanned");
        addCase("a document of the same number, whose row a restore took away", false);
        addCase("a signed copy, scanned over the PDF", true);
    }

    void anotherDocumentsFileIsPutAsideOnRegenerating()
    {
        QFETCH(bool, scanned);
        const DocumentResult result = generateFund();
        QVERIFY(result.ok);
        DocumentRecord restored = *DocumentDao().findById(result.docId);
        if (scanned) {
            QVERIFY(put(fundPath(), "%PDF-1.4 signed and scanned"));
        } else {
            QVERIFY(DocumentService().deleteDocument(result.docId).ok);
            FundDecisionInput later = DocumentSamples::fundInput({ 1 });
            later.fundNature = u"另一笔往来"_s;
            QCOMPARE(DocumentService().generateFundDecision(later).docNo, result.docNo);
            QCOMPARE(
                TestDatabase::run({ u"DELETE FROM entity_links"_s, u"DELETE FROM documents"_s }),
                QString());
            QVERIFY(DocumentDao().insert(restored));
        }
        const QByteArray others = bytesOf(fundPath());
        const qint64 id = row(u"SELECT id FROM documents"_s).toLongLong();
        expectWarnings({ u".*put aside: .*_旧_"_s });
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

    void aSignedCopyOutlivesItsDocument()
    {
        const DocumentResult result = generateFund();
        QVERIFY(put(fundPath(), "%PDF-1.4 signed and scanned"));
        expectWarnings({ u".*put aside: .*_旧_"_s });
        QVERIFY(DocumentService().deleteDocument(result.docId).ok);
        QCOMPARE(row(u"SELECT COUNT(*) FROM documents"_s), u"0"_s);
        QCOMPARE(exportsContent().values(), QList<QByteArray> { "%PDF-1.4 signed and scanned" });
        QVERIFY(exportsContent().firstKey().contains(u"_旧_"_s));
    }

    void filesOfOtherRowsAreNeverTouched()
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
        QCOMPARE(exportsContent().keys(), QStringList { fundName() });
        QCOMPARE(bytesOf(fundPath()), QByteArray("the other's"));
    }

    void aFolderAtThePlaceOfThePdfIsLeftAlone()
    {
        const DocumentResult result = generateFund();
        QVERIFY(QFile::remove(fundPath()) && QDir().mkpath(fundPath()));
        QCOMPARE(DocumentService().regenerate(result.docId).error, cannotWrite());
        QCOMPARE(DocumentService().restoreFile(result.docId).error, cannotWrite());
        QVERIFY(DocumentService().deleteDocument(result.docId).ok);
        QVERIFY(QFileInfo(fundPath()).isDir());
    }

    void leftoversOfACrashAreReportedAndLeftAlone()
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

    void anInterruptedRegenerationIsUndone_data()
    {
        // What lies at the PDF's place, and whether the former file takes it.
        addColumns<bool, QString, bool>("formerIsScan", "inPlace", "undone");
        addCase("before the row was committed", false, u"new"_s, true);
        addCase("the same over a signed copy", true, u"new"_s, true);
        addCase("after the commit, over a signed copy", true, u"committed"_s, false);
        addCase("and the PDF is gone", false, u"nothing"_s, true);
        addCase("before the PDF was replaced", false, u"former"_s, false);
        addCase("after the commit", false, u"committed"_s, false);
        addCase("and a signed copy was scanned over it since", false, u"scan"_s, false);
    }

    void anInterruptedRegenerationIsUndone()
    {
        QFETCH(bool, formerIsScan);
        QFETCH(QString, inPlace);
        QFETCH(bool, undone);
        const DocumentResult result = generateFund();
        const QByteArray former = formerIsScan ? "%PDF-1.4 signed" : bytesOf(fundPath());
        const QString html = DocumentDao().findById(result.docId)->contentHtml;
        QCOMPARE(
            TestDatabase::run({ u"UPDATE transactions SET summary = '改过的摘要'"_s }), QString());
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
            expectWarnings({ u".*put aside: .*_旧_"_s });
        DocumentFiles::repair();
        QCOMPARE(exportsContent() == before, !undone);
        if (!undone)
            return;
        QCOMPARE(bytesOf(fundPath()), former);
        // The former PDF is no leftover any more; the new one is kept.
        QCOMPARE(exportsContent().size(), inPlace == u"new"_s ? 2 : 1);
        QVERIFY(inPlace != u"new"_s
            || bytesOf(DocumentFiles::filesWithoutRow().value(0)) == before.value(fundName()));
    }

    void aMissingExportsFolderIsMade()
    {
        QVERIFY(QDir(AppPaths::exportsDir()).removeRecursively());
        const DocumentResult result = generateFund();
        QVERIFY(result.ok && QFile::exists(fundPath()));
        QVERIFY(QDir(AppPaths::exportsDir()).removeRecursively());
        QVERIFY(DocumentService().restoreFile(result.docId).ok);
        QVERIFY(QFile::exists(fundPath()));
    }

    void theOwnFileComesFirst()
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

    void aCopyNeverTouchesTheOriginal()
    {
        // The rows of a copied data directory name the files of the original.
        const QTemporaryDir original;
        const DocumentResult result = generateFund();
        const QString there = original.filePath(fundName());
        QVERIFY(QFile::copy(fundPath(), there));
        const QByteArray bytes = bytesOf(there);
        QCOMPARE(TestDatabase::run({ u"UPDATE documents SET file_path = '%1'"_s.arg(there) }),
            QString());

        DocumentService service;
        QCOMPARE(service.regenerate(result.docId).filePath, fundPath());
        QVERIFY(QFile::remove(fundPath()));
        QCOMPARE(service.regenerate(result.docId).filePath, fundPath());
        QVERIFY(QFile::exists(fundPath()));
        QVERIFY(service.deleteDocument(result.docId).ok);
        QVERIFY(!QFile::exists(fundPath()));
        QCOMPARE(bytesOf(there), bytes);
    }

    void pathsOfOtherSystemsAreUnderstood()
    {
        const auto nameOf = [](const QString& stored) {
            const QString path = DocumentFiles::documentFile({ .docType = DocType::FundDecision,
                .docNo = u"KYR-FD-2025-0001"_s,
                .filePath = stored });
            return QDir(AppPaths::exportsDir()).relativeFilePath(path);
        };
        QCOMPARE(nameOf(u"D:\\Brixa\\data\\exports\\a.pdf"_s), u"a.pdf"_s);
        QCOMPARE(nameOf(u"/opt/brixa/data/exports/a.pdf"_s), u"a.pdf"_s);
        QCOMPARE(nameOf({}), fundName());
        QCOMPARE(nameOf(u"/opt/brixa/.."_s), fundName());
    }

    void aMissingPdfIsWrittenAgain()
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

    void filesWithoutRowsAreReported()
    {
        QVERIFY(generateFund().ok);
        const QDir folder(AppPaths::exportsDir());
        QVERIFY(put(folder.filePath(u"乙.pdf"_s), "b") && put(folder.filePath(u"甲.PDF"_s), "a"));
        QVERIFY(put(folder.filePath(u"流水.csv"_s), "c"));
        QCOMPARE(DocumentFiles::filesWithoutRow(),
            (QStringList { folder.filePath(u"乙.pdf"_s), folder.filePath(u"甲.PDF"_s) }));
        QCOMPARE(exportsContent().size(), 4);
    }
};

static const RegisteredTest<TestDocumentFiles> registered;

#include "TestDocumentFiles.moc"
