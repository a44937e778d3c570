#include "core/AppPaths.h"
#include "db/TransactionDao.h"
#include "services/backup/BackupService.h"
#include "services/csv/CsvExport.h"
#include "services/documents/DocumentService.h"
#include "services/DocumentSamples.h"
#include "services/entries/EntryService.h"
#include "services/VoucherSample.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

/// What the user reads; empty when it was done without a word.
using Operation = QString (*)();

QString saveEntry()
{
    Transaction entry = DocumentSamples::entry(7);
    entry.id = 1;
    return EntryService::save(entry, {}, {}).message;
}

QString importVoucher()
{
    return VoucherService::importVoucher(
        { .sourcePath = AppPaths::dataDir() + u"/sources/a.pdf"_s }, 0, { 1 })
        .error;
}

QString editVoucher()
{
    QString error;
    const bool done
        = VoucherService::updateVoucher(1, { .name = u"新名称"_s }, 0, { 1, 2 }, &error);
    return done == error.isEmpty() ? error : u"(contradiction)"_s;
}

QString deleteVoucher()
{
    QString error;
    const bool done = VoucherService::deleteVoucher(1, &error);
    return done == error.isEmpty() ? error : u"(contradiction)"_s;
}

QString generate()
{
    return DocumentService().generateFundDecision(DocumentSamples::fundInput({ 1, 2 })).error;
}

QString regenerate()
{
    return DocumentService().regenerate(1).error;
}

QString deleteDocument()
{
    return DocumentService().deleteDocument(1).error;
}

QString backUp()
{
    return BackupService().backupTo(AppPaths::dataDir() + u"/kept"_s).message;
}

QString restore()
{
    return BackupService().restoreFrom(AppPaths::dataDir() + u"/prepared"_s).message;
}

QString exportCsv()
{
    return CsvExport::exportSearch({}, AppPaths::dataDir() + u"/kept/ledger.csv"_s).message;
}

// Names and contents of what belongs to the rows.
QMap<QString, QByteArray> ownFiles()
{
    QMap<QString, QByteArray> files;
    for (const QString& folder : { AppPaths::voucherAssetsDir(), AppPaths::exportsDir() }) {
        for (QDirIterator it(folder, QDir::Files | QDir::Hidden); it.hasNext();) {
            const QString path = it.next();
            files.insert(path, TestFile::bytesOf(path));
        }
    }
    return files;
}

// Another process in the middle of writing, for as long as it lives.
class OtherWriter final {
public:
    OtherWriter()
    {
        m_process.start(QStringLiteral(DB_HELPER), { u"write"_s, AppPaths::databasePath() });
        m_holds = m_process.waitForReadyRead() && m_process.readLine().trimmed() == "locked";
    }
    ~OtherWriter()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }
    OtherWriter(const OtherWriter&) = delete;
    OtherWriter& operator=(const OtherWriter&) = delete;
    bool holds() const { return m_holds; }

private:
    QProcess m_process;
    bool m_holds = false;
};

const QString busy = u"数据库正被其他程序占用，请关闭该程序后重试（database is locked"_s;
const QString sqlBusy = u"SQL error: database is locked"_s;

} // namespace

Q_DECLARE_METATYPE(Operation)

/// Faults of the database file itself, for every operation that writes.
class TestFaults final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        QVERIFY(DocumentSamples::storeCompany());
        QCOMPARE(DocumentSamples::storeEntries(2), (QList<qint64> { 1, 2 }));
        QCOMPARE(VoucherSample::archived(u"a.pdf"_s, { 1 }), 1);
        QCOMPARE(generate(), QString());
        // So that regenerating changes something.
        QCOMPARE(
            TestDatabase::run({ u"UPDATE transactions SET summary = '改过的摘要'"_s }), QString());
        const QDir data(AppPaths::dataDir());
        QVERIFY(data.mkpath(u"kept"_s));
        const BackupResult backup = BackupService().backupTo(AppPaths::dataDir());
        QVERIFY(backup.ok && QDir().rename(backup.folder, data.filePath(u"prepared"_s)));
    }

    void anotherWriterIsToldAndChangesNothing_data()
    {
        addColumns<Operation, QString>("operation", "message");
        addCase("save entry", Operation(saveEntry), u"流水写入失败，请重试。\n原因："_s + busy);
        addCase("import voucher", Operation(importVoucher), busy);
        addCase("edit voucher", Operation(editVoucher), busy);
        addCase("delete voucher", Operation(deleteVoucher), busy);
        addCase("generate", Operation(generate), busy);
        addCase("regenerate", Operation(regenerate), busy);
        addCase("delete document", Operation(deleteDocument), busy);
    }

    void anotherWriterIsToldAndChangesNothing()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, message); // its beginning
        // Nobody wants to wait five seconds for each of them.
        QCOMPARE(TestDatabase::run({ u"PRAGMA busy_timeout = 50"_s }), QString());
        const QStringList before = TestDatabase::dump();
        const auto files = ownFiles();
        {
            const OtherWriter writer;
            QVERIFY(writer.holds());
            VoucherSample::expectWarnings({ sqlBusy });
            const QString told = operation();
            QVERIFY2(told.startsWith(message), qUtf8Printable(told));
        }
        QCOMPARE(TestDatabase::dump(), before);
        QVERIFY(ownFiles() == files);
        QCOMPARE(operation(), QString());
        QVERIFY(TestDatabase::dump() != before);
    }

    void whatOnlyReadsWorksBesideAnotherWriter()
    {
        QCOMPARE(TestDatabase::run({ u"PRAGMA busy_timeout = 50"_s }), QString());
        const OtherWriter writer;
        QVERIFY(writer.holds());
        QCOMPARE(exportCsv(), QString());
        VoucherSample::expectWarnings(
            { u"WAL checkpoint is incomplete: the database is busy"_s, sqlBusy });
        QCOMPARE(backUp(), u"备份完成但备份时间未能写入档案"_s);
    }

    void aRestoreReplacesTheDataBesideAnotherWriter()
    {
        QCOMPARE(TestDatabase::run({ u"PRAGMA busy_timeout = 50"_s }), QString());
        QCOMPARE(
            TestDatabase::run({ u"UPDATE transactions SET summary = '后来的摘要'"_s }), QString());
        {
            const OtherWriter writer;
            QVERIFY(writer.holds());
            VoucherSample::expectWarnings(
                { u"WAL checkpoint is incomplete: the database is busy"_s });
            QCOMPARE(restore(), QString());
        }
        QCOMPARE(TestDatabase::row(u"SELECT summary FROM transactions"_s), u"改过的摘要"_s);
        QCOMPARE(TestDatabase::row(u"PRAGMA integrity_check"_s), u"ok"_s);
        QCOMPARE(saveEntry(), QString());
    }

    void aDiskThatTakesNothingMoreIsToldAndChangesNothing_data()
    {
        addColumns<Operation, QString>("operation", "message");
        addCase("save entry", Operation(saveEntry), u"事务提交失败，请重试。"_s);
        addCase("edit voucher", Operation(editVoucher), u"事务提交失败，请重试"_s);
        addCase("delete voucher", Operation(deleteVoucher), u"事务提交失败，请重试"_s);
        addCase("delete document", Operation(deleteDocument), u"事务提交失败。"_s);
    }

    // The others fail before they reach the database, see their own tests.
    void aDiskThatTakesNothingMoreIsToldAndChangesNothing()
    {
        QFETCH(Operation, operation);
        const QStringList before = TestDatabase::dump();
        const auto files = ownFiles();
        {
            VoucherSample::expectWarnings({ u"Transaction commit failed: "_s });
            expectWarnings({ u"Transaction rollback failed: .*no trans"_s });
            QCOMPARE(TestDatabase::row(u"PRAGMA wal_checkpoint(TRUNCATE)"_s), u"0|0|0"_s);
            const VoucherSample::FullDisk full(0);
            QTEST(operation(), "message");
        }
        QCOMPARE(TestDatabase::dump(), before);
        QVERIFY(ownFiles() == files);
        QCOMPARE(operation(), QString());
    }

    // What the user moved or deleted with other programs is no reason to be stuck.
    void vanishedFilesDoNotStopTheWork()
    {
        for (const QString& path : ownFiles().keys())
            QVERIFY(QFile::remove(path));
        for (const Operation operation : { regenerate, deleteDocument, editVoucher, deleteVoucher })
            QCOMPARE(operation(), QString());
        QVERIFY(ownFiles().isEmpty());
        QVERIFY(QDir(AppPaths::dataDir() + u"/prepared"_s).removeRecursively());
        expectWarnings({ u"Restore refused: "_s });
        QCOMPARE(restore(), u"目录不存在"_s);
    }
};

static const RegisteredTest<TestFaults> registered;

#include "TestFaults.moc"
