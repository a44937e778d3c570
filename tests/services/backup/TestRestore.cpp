#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "services/backup/BackupSample.h"
#include "services/backup/BackupService.h"
#include "support/DatabaseTestCase.h"
#include "support/FileSizeLimit.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/Warnings.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using BackupSample::put;
using BackupSample::signature;

namespace {

const QString toVersion1
    = u"ALTER TABLE company_profile DROP COLUMN theme_mode; DROP INDEX idx_tx_query; "
      "DROP TABLE sqlite_stat1; PRAGMA user_version = 1;"_s;

QStringList safetyCopies()
{
    return QDir(AppPaths::autoBackupBeforeRestoreDir())
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

bool canWrite()
{
    return ProfileDao().setThemeMode(u"dark"_s) && ProfileDao().load().themeMode == u"dark"_s;
}

} // namespace

class TestRestore final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    // A backup of new data in a folder with an odd name, and old data that are live.
    void init()
    {
        DatabaseTestCase::init();
        m_target = std::make_unique<QTemporaryDir>();
        const QString parent = m_target->filePath(u"it's 100% #备份?"_s);
        QVERIFY(QDir().mkpath(parent) && BackupSample::fill(u"新"_s));
        QVERIFY(put(AppPaths::voucherAssetsDir() + u"/only new"_s, "x"));
        m_newContent = signature();
        const BackupResult result = BackupService().backupTo(parent);
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        m_backup = result.folder;

        DatabaseTestCase::cleanup();
        DatabaseTestCase::init();
        QVERIFY(BackupSample::fill(u"旧"_s));
        QVERIFY(put(AppPaths::voucherAssetsDir() + u"/only old"_s, "x"));
        m_oldContent = signature();
        QVERIFY(m_oldContent != m_newContent);
    }

    void cleanup()
    {
        DatabaseTestCase::cleanup();
        m_target.reset();
    }

    void theBackupReplacesEverything()
    {
        const auto backupBefore = BackupSample::tree(m_backup);
        const RestoreResult result = BackupService().restoreFrom(m_backup);
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        QCOMPARE(result.message, QString());
        QVERIFY(result.databaseOpen);
        QCOMPARE(signature(), m_newContent);
        QVERIFY(canWrite());
        QCOMPARE(BackupSample::strangersInDataDir(), QStringList());
        QCOMPARE(BackupSample::tree(m_backup), backupBefore);

        QCOMPARE(QFileInfo(result.autoBackupFolder).path(), AppPaths::autoBackupBeforeRestoreDir());
        const BackupPreview safetyCopy = BackupService::inspect(result.autoBackupFolder);
        QCOMPARE(safetyCopy.warnings, QStringList());
        QCOMPARE(safetyCopy.manifest.kind, u"恢复前自动备份"_s);
        QCOMPARE(safetyCopy.companyName, u"旧"_s);
        QCOMPARE(safetyCopy.voucherFiles, 6);
        QCOMPARE(ProfileDao().load().lastBackupAt, QString()); // as it was when the backup was made
    }

    void aRestoreCanBeTakenBack()
    {
        const RestoreResult there = BackupService().restoreFrom(m_backup);
        QVERIFY(there.ok);
        const RestoreResult back = BackupService().restoreFrom(there.autoBackupFolder);
        QVERIFY2(back.ok, qUtf8Printable(back.message));
        QCOMPARE(signature(), m_oldContent);
        QVERIFY2(safetyCopies().size() == 2, "no safety copy is ever removed");
        QCOMPARE(BackupService::inspect(back.autoBackupFolder).companyName, u"新"_s);
    }

    void olderVersionsAreBroughtUpToDate()
    {
        QCOMPARE(TestDatabase::runOnFile(m_backup + u"/brixa.db"_s, toVersion1), QString());
        const RestoreResult result = BackupService().restoreFrom(m_backup);
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        QCOMPARE(signature(), m_newContent);
        QCOMPARE(DatabaseManager::instance().userVersion(), 3);
        QVERIFY(canWrite());
    }

    void aBackupWithoutVoucherFolderGivesAnEmptyOne()
    {
        QVERIFY(QDir(m_backup + u"/voucher_assets"_s).removeRecursively());
        QVERIFY(BackupService().restoreFrom(m_backup).ok);
        QVERIFY(QFileInfo(AppPaths::voucherAssetsDir()).isDir());
        QVERIFY(BackupSample::tree(AppPaths::voucherAssetsDir()).isEmpty());
        QCOMPARE(ProfileDao().load().companyName, u"新"_s);
    }

    // The folder goes away with the data that the backup replaces.
    void aBackupAmongTheLiveVouchersIsRefused()
    {
        const QString moved = AppPaths::voucherAssetsDir() + u"/backup"_s;
        QVERIFY(QFile::rename(m_backup, moved));
        const auto before = BackupSample::tree(AppPaths::dataDir()).keys();
        expectWarnings({ u"Restore refused: "_s });
        const RestoreResult result = BackupService().restoreFrom(moved);
        QVERIFY(!result.ok && result.databaseOpen);
        QCOMPARE(result.message, u"备份目录位于凭证文件夹内，请先将其移到其他位置："_s + moved);
        QCOMPARE(BackupSample::tree(AppPaths::dataDir()).keys(), before);
    }

    void aLinkedVoucherFolderKeepsItsTarget()
    {
#ifdef Q_OS_UNIX
        const QString disk = m_target->filePath(u"disk"_s);
        QVERIFY(QFile::rename(AppPaths::voucherAssetsDir(), disk));
        QVERIFY(QFile::link(disk, AppPaths::voucherAssetsDir()));
        const auto before = BackupSample::tree(disk);
        QVERIFY(BackupService().restoreFrom(m_backup).ok);
        QCOMPARE(signature(), m_newContent);
        QCOMPARE(BackupSample::tree(disk), before);
#endif
    }

    // Its log stays in use when the program closes the database, and must not meet the new one.
    void anotherReaderDoesNotMixTheData()
    {
        {
            QSqlDatabase reader = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"reader"_s);
            reader.setDatabaseName(AppPaths::databasePath());
            QVERIFY(reader.open());
            QCOMPARE(reader.exec(u"SELECT 1 FROM transactions"_s).lastError().text(), QString());
            QVERIFY(BackupService().restoreFrom(m_backup).ok);
            QCOMPARE(signature(), m_newContent);
        }
        QSqlDatabase::removeDatabase(u"reader"_s);
        QCOMPARE(signature(), m_newContent);
        QVERIFY(canWrite());
    }

    void unfitDatabasesChangeNothing_data()
    {
        addColumns<QString, QString>("kind", "reason");
        addCase("garbage", u"garbage"_s, u"file is not a database"_s);
        addCase("cut to half", u"half"_s, u"malformed|数据库完整性检查失败："_s);
        addCase("cut inside a page", u"cut"_s, u"：数据库文件不完整$"_s);
        addCase("another program's", u"CREATE TABLE t (x); PRAGMA user_version = 7;"_s,
            u"：不是本软件的数据库$"_s);
        addCase("without the profile table", u"DROP TABLE company_profile"_s,
            u"：不是本软件的数据库$"_s);
        addCase("without the ledger", u"DROP TABLE transactions"_s, u"：不是本软件的数据库$"_s);
        addCase("newer and without the ledger",
            u"DROP TABLE transactions; PRAGMA user_version = 4"_s, u"：不是本软件的数据库$"_s);
        addCase("without the profile", u"DELETE FROM company_profile"_s, u"：公司档案无法读取$"_s);
    }

    void unfitDatabasesChangeNothing()
    {
        QFETCH(QString, kind);
        QFETCH(QString, reason);
        const QString database = m_backup + u"/brixa.db"_s;
        const QByteArray healthy = TestFile::bytesOf(database);
        if (kind.contains(u"CREATE"_s))
            QVERIFY(QFile::remove(database));
        if (kind == u"garbage"_s)
            QVERIFY(put(database, QByteArray(5000, 'x')));
        else if (kind == u"half"_s)
            QVERIFY(put(database, healthy.first(healthy.size() / 2)));
        else if (kind == u"cut"_s)
            QVERIFY(put(database, healthy.first(healthy.size() - 1000)));
        else
            QCOMPARE(TestDatabase::runOnFile(database, kind), QString());

        expectWarnings({ u"Restore failed: "_s });
        const RestoreResult result = BackupService().restoreFrom(m_backup);
        QVERIFY(!result.ok);
        QVERIFY2(
            result.message.startsWith(u"恢复后数据库无法打开："_s), qUtf8Printable(result.message));
        QVERIFY2(
            result.message.contains(QRegularExpression(reason)), qUtf8Printable(result.message));
        QVERIFY(result.databaseOpen);
        expectUnchanged(result.autoBackupFolder);
    }

    // What only shows once the database lies in its place and is opened.
    void aDatabaseThatCannotBeMigratedChangesNothing()
    {
        QCOMPARE(
            TestDatabase::runOnFile(m_backup + u"/brixa.db"_s,
                u"DROP INDEX idx_tx_risk; DROP INDEX idx_tx_query; ALTER TABLE transactions RENAME "
                "COLUMN risk_level TO old_level; PRAGMA user_version = 1;"_s),
            QString());
        expectWarnings(
            { u"Schema statement failed: .*risk_level"_s, u"Migration to v2 failed: "_s },
            QtCriticalMsg);
        expectWarnings({ u"Restore failed: "_s });
        const RestoreResult result = BackupService().restoreFrom(m_backup);
        QVERIFY(!result.ok);
        QVERIFY(result.message.startsWith(u"恢复后数据库无法打开："_s));
        expectUnchanged(result.autoBackupFolder);
    }

    void obstaclesChangeNothing_data()
    {
        addColumns<QString, QString, bool>("obstacle", "message", "safetyCopyMade");
        const QString data = AppPaths::dataDir();
        addCase("a file in the place of the safety copies", u"auto folder"_s,
            u"无法创建自动备份目录：%1/auto_backup_before_restore"_s, false);
        addCase("a write that is under way", u"write"_s,
            u"WAL 检查点失败：database table is locked Unable to fetch row"_s, false);
        addCase("a transaction that is open", u"transaction"_s, u"当前数据库自动备份失败"_s, false);
        addCase("a live voucher that cannot be read", u"live link"_s, u"当前数据库自动备份失败"_s,
            false);
        addCase("a voucher of the backup that cannot be read", u"backup link"_s,
            u"复制失败：%2/voucher_assets/link"_s, true);
        addCase("a file in the place of the backup's vouchers", u"backup file"_s,
            u"复制失败：%2/voucher_assets"_s, true);
        addCase("an exchange that was never finished", u"unfinished"_s,
            u"上次恢复尚未完成，请重新启动软件。"_s, true);
    }

    void obstaclesChangeNothing()
    {
        QFETCH(QString, obstacle);
        const QString autoFolder = AppPaths::autoBackupBeforeRestoreDir();
        const QString unfinished = AppPaths::dataDir() + u"/restore_swap"_s;
        const QString liveLink = AppPaths::voucherAssetsDir() + u"/link"_s;
        const QString vouchers = m_backup + u"/voucher_assets"_s;
        if (obstacle == u"auto folder"_s)
            QVERIFY(QDir().rmdir(autoFolder) && put(autoFolder, "a file"));
        else if (obstacle == u"write"_s)
            QCOMPARE(TestDatabase::run({ u"BEGIN"_s, u"UPDATE company_profile SET phone = '1'"_s }),
                QString());
        else if (obstacle == u"transaction"_s)
            QCOMPARE(TestDatabase::run({ u"BEGIN"_s }), QString());
        else if (obstacle == u"live link"_s)
            QVERIFY(QFile::link(u"/nonexistent"_s, liveLink));
        else if (obstacle == u"backup link"_s)
            QVERIFY(QFile::link(u"/nonexistent"_s, vouchers + u"/link"_s));
        else if (obstacle == u"backup file"_s)
            QVERIFY(QDir(vouchers).removeRecursively() && put(vouchers, "a file"));
        else
            QVERIFY(put(unfinished + u"/old/brixa.db"_s, "x"));

        expectWarnings({ u"Restore failed: "_s });
        if (obstacle.contains(u"backup"_s) || obstacle == u"live link"_s)
            expectWarnings({ u"Copying files: "_s });
        QFETCH(QString, message);
        if (message == u"当前数据库自动备份失败"_s)
            expectWarnings({ u"Automatic backup failed: "_s });
        const RestoreResult result = BackupService().restoreFrom(m_backup);
        QVERIFY(!result.ok);
        QCOMPARE(result.message,
            message.contains(u'%')
                ? message.replace(u"%1"_s, AppPaths::dataDir()).replace(u"%2"_s, m_backup)
                : message);
        QFETCH(bool, safetyCopyMade);
        QCOMPARE(!result.autoBackupFolder.isEmpty(), safetyCopyMade);

        if (obstacle == u"write"_s || obstacle == u"transaction"_s)
            QCOMPARE(TestDatabase::run({ u"ROLLBACK"_s }), QString());
        QFile::remove(liveLink);
        QDir(unfinished).removeRecursively();
        expectUnchanged(result.autoBackupFolder);
    }

    void aFullDiskForTheDatabaseChangesNothing()
    {
#ifdef Q_OS_UNIX
        QCOMPARE(TestDatabase::runOnFile(m_backup + u"/brixa.db"_s,
                     u"CREATE TABLE large AS SELECT zeroblob(3000000) AS x"_s),
            QString());
        expectWarnings({ u"Copying .*: File too large"_s, u"Restore failed: "_s });
        RestoreResult result;
        {
            const FileSizeLimit limit(1'000'000);
            result = BackupService().restoreFrom(m_backup);
        }
        QVERIFY(!result.ok);
        QCOMPARE(result.message, u"数据库文件复制失败："_s + AppPaths::databasePath());
        expectUnchanged(result.autoBackupFolder);
#endif
    }

    // The safety copy still has its rows; closing the connection would give up the rest.
    void aDeletedDatabaseStaysOpen()
    {
#ifdef Q_OS_UNIX
        QVERIFY(QFile::remove(AppPaths::databasePath()));
        expectWarnings({ u"Restore failed: "_s });
        const RestoreResult result = BackupService().restoreFrom(m_backup);
        QVERIFY(!result.ok && result.databaseOpen);
        QCOMPARE(result.message, u"数据库文件被占用，无法覆盖："_s + AppPaths::databasePath());
        QCOMPARE(signature(), m_oldContent);
        QCOMPARE(BackupService::inspect(result.autoBackupFolder).companyName, u"旧"_s);
        DatabaseManager::instance().close();
        for (const QString& companion : { u"-wal"_s, u"-shm"_s })
            QFile::remove(AppPaths::databasePath() + companion);
#endif
    }

private:
    // The live data and everything around them are as before, and the program can go on.
    void expectUnchanged(const QString& safetyCopy)
    {
        QCOMPARE(signature(), m_oldContent);
        QVERIFY(canWrite());
        QCOMPARE(BackupSample::strangersInDataDir(), QStringList());
        QCOMPARE(safetyCopies(),
            safetyCopy.isEmpty() ? QStringList()
                                 : QStringList { QFileInfo(safetyCopy).fileName() });
        if (!safetyCopy.isEmpty())
            QCOMPARE(BackupService::inspect(safetyCopy).warnings, QStringList());
    }

    std::unique_ptr<QTemporaryDir> m_target;
    QString m_backup; // of other data than the live ones
    QString m_newContent;
    QString m_oldContent;
};

static const RegisteredTest<TestRestore> registered;

#include "TestRestore.moc"
