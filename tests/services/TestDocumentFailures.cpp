#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/DocumentDao.h"
#include "services/documents/DocumentService.h"
#include "services/FundDecisionFile.h"
#include "support/DatabaseTestCase.h"
#include "support/FileSizeLimit.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/Warnings.h"

#include <QDir>
#include <QRegularExpression>

#include <memory>

using namespace Qt::StringLiterals;
using namespace FundDecisionFile;
using TestDatabase::row;
using TestFile::bytesOf;
using TestFile::put;

namespace {

/// A way in which a step fails, how it is brought about and undone.
struct Fault {
    QString trigger; // SQL, may be empty
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
            if (!put(AppPaths::exportsDir(), "in the way"))
                m_problem = u"no file in the way"_s;
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

/// Row and PDF of a document come and go together, whatever fails.
class TestDocumentFailures final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        QVERIFY(storeLedger());
        QCOMPARE(TestDatabase::run({ u"CREATE TABLE later (id INTEGER REFERENCES projects (id) "
                                     "DEFERRABLE INITIALLY DEFERRED)"_s }),
            QString());
    }

    void failedGenerationLeavesNothing_data()
    {
        addColumns<Fault>("fault");
        addCase("the row", sqlFault(u"BEFORE INSERT ON documents"_s));
        addCase(
            "the second link", sqlFault(u"BEFORE INSERT ON entity_links WHEN NEW.target_id = 2"_s));
        addCase("the row, with all that was open",
            Fault { .trigger
                = u"BEFORE INSERT ON documents BEGIN SELECT RAISE(ROLLBACK, 'forced'); END"_s,
                .warnings = { "SQL error: .*forced", "Transaction rollback failed: " },
                .error = u"forced"_s });
        addCase("the commit", commitFault(u"AFTER INSERT ON documents"_s));
        addCase("the exports folder", exportsIsAFile());
        addCase("a folder in the place of the PDF",
            Fault { .folderAt = fundPath(), .error = exactly(cannotWrite()) });
        addCase("the disk", fullDisk());
    }

    void failedGenerationLeavesNothing()
    {
        QFETCH(Fault, fault);
        const QStringList before = TestDatabase::dump();
        {
            const Faulty faulty(fault);
            QCOMPARE(faulty.problem(), QString());
            const DocumentResult result = generateFund();
            QVERIFY(!result.ok);
            QCOMPARE(result.docId, 0);
            QVERIFY2(result.error.contains(QRegularExpression(fault.error)),
                qUtf8Printable(result.error));
        }
        QCOMPARE(TestDatabase::dump().filter(u"documents: "_s), before.filter(u"documents: "_s));
        QCOMPARE(row(u"SELECT COUNT(*) FROM entity_links"_s), u"0"_s);
        QVERIFY2(exportsContent().isEmpty(), qUtf8Printable(exportsContent().keys().join(u' ')));
        // The next attempt works and takes the same number.
        const DocumentResult result = generateFund();
        QVERIFY2(result.ok, qUtf8Printable(result.error));
        QCOMPARE(result.docNo, u"KYR-FD-2025-0001"_s);
        QCOMPARE(exportsContent().keys(), QStringList { fundName() });
    }

    void failedRegenerationKeepsTheOldPdf_data()
    {
        addColumns<Fault>("fault");
        addCase("the row", sqlFault(u"BEFORE UPDATE ON documents"_s));
        addCase("the commit", commitFault(u"AFTER UPDATE ON documents"_s));
        addCase("the exports folder", exportsIsAFile());
        addCase("the disk", fullDisk());
    }

    void failedRegenerationKeepsTheOldPdf()
    {
        QFETCH(Fault, fault);
        const DocumentResult result = generateFund();
        QVERIFY(result.ok);
        QCOMPARE(
            TestDatabase::run({ u"UPDATE transactions SET summary = '改过的摘要'"_s }), QString());
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
        QCOMPARE(exportsContent().keys(), QStringList { fundName() });
        QVERIFY(exportsContent() != files);
        QVERIFY(DocumentDao().findById(result.docId)->contentHtml.contains(u"改过的摘要"_s));
    }

    void failedDeletionKeepsEverything_data()
    {
        addColumns<Fault>("fault");
        addCase("the links", sqlFault(u"BEFORE DELETE ON entity_links"_s));
        addCase("the row", sqlFault(u"BEFORE DELETE ON documents"_s));
        addCase("the commit", commitFault(u"AFTER DELETE ON documents"_s));
    }

    void failedDeletionKeepsEverything()
    {
        QFETCH(Fault, fault);
        const DocumentResult result = generateFund();
        const auto files = exportsContent();
        {
            const Faulty faulty(fault);
            QCOMPARE(faulty.problem(), QString());
            const DocumentResult deleted = DocumentService().deleteDocument(result.docId);
            QVERIFY(!deleted.ok);
            QVERIFY2(deleted.error.contains(QRegularExpression(fault.error)),
                qUtf8Printable(deleted.error));
        }
        QCOMPARE(row(u"SELECT COUNT(*) FROM documents"_s), u"1"_s);
        QCOMPARE(row(u"SELECT COUNT(*) FROM entity_links"_s), u"2"_s);
        QVERIFY(exportsContent() == files);
        QVERIFY(DocumentService().deleteDocument(result.docId).ok);
        QVERIFY(exportsContent().isEmpty());
    }

    void aClosedDatabaseIsReported()
    {
        DatabaseManager::instance().close();
        expectWarnings({ u".*SQL error: .*company_profile"_s });
        const DocumentResult result = generateFund();
        QVERIFY(!result.ok);
        QCOMPARE(result.error, u"数据库未打开"_s);
        QVERIFY(exportsContent().isEmpty());
    }

    void aTransactionThatCannotBeginIsReported()
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

    void aFailureBringsTheFileWithoutARowBack()
    {
        QVERIFY(put(fundPath(), "signed and scanned"));
        {
            const Faulty faulty(commitFault(u"AFTER INSERT ON documents"_s));
            QVERIFY(!generateFund().ok);
        }
        QCOMPARE(exportsContent().keys(), QStringList { fundName() });
        QCOMPARE(bytesOf(fundPath()), QByteArray("signed and scanned"));
    }
};

static const RegisteredTest<TestDocumentFailures> registered;

#include "TestDocumentFailures.moc"
