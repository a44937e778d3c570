#include "core/AppPaths.h"
#include "db/ProfileDao.h"
#include "services/backup/BackupLayout.h"
#include "services/backup/BackupSample.h"
#include "services/backup/BackupService.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/Warnings.h"

#include <QCoreApplication>
#include <QDir>

using namespace Qt::StringLiterals;
using BackupSample::put;
using BackupSample::tree;

namespace {

// A folder that passes for a backup.
bool makeBackup(const QString& folder, const QByteArray& manifest, const QByteArray& database)
{
    return QDir().mkpath(folder)
        && (manifest.isNull() || put(BackupLayout::manifestIn(folder), manifest))
        && (database.isNull() || put(BackupLayout::databaseIn(folder), database));
}

} // namespace

class TestBackupPreview final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationVersion(u"1.0.0"_s); }

    void init()
    {
        DatabaseTestCase::init();
        QVERIFY(BackupSample::fill(u"甲公司"_s));
        m_target = std::make_unique<QTemporaryDir>();
        const BackupResult result = BackupService().backupTo(m_target->path());
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        m_backup = result.folder;
    }

    void invalidFoldersAreRefused_data()
    {
        addColumns<QByteArray, QByteArray, QString>("manifest", "database", "message");
        const QString noManifest = u"缺少备份清单 backup_manifest.txt，不是有效备份目录"_s;
        const QString noDatabase = u"缺少数据库文件 brixa.db 或文件为空"_s;
        addCase("neither", QByteArray(), QByteArray(), noManifest);
        addCase("no manifest", QByteArray(), QByteArray("db"), noManifest);
        addCase("no database", QByteArray("m"), QByteArray(), noDatabase);
        addCase("an empty database", QByteArray("m"), QByteArray(""), noDatabase);
        addCase("both", QByteArray(""), QByteArray("db"), QString());
    }

    void invalidFoldersAreRefused()
    {
        QFETCH(QByteArray, manifest);
        QFETCH(QByteArray, database);
        QFETCH(QString, message);
        const QTemporaryDir root;
        const QString folder = root.filePath(u"backup"_s);
        for (const QString& missing : { QString(), folder })
            QCOMPARE(BackupService::validateBackup(missing).message, u"目录不存在"_s);
        QVERIFY(makeBackup(folder, manifest, database));
        const BackupCheck check = BackupService::validateBackup(folder);
        QCOMPARE(check.ok, message.isEmpty());
        QCOMPARE(check.message, message);
        if (!check.ok) {
            QCOMPARE(BackupService::inspect(folder).message, message);
            expectWarnings({ u"Restore refused: "_s });
            const RestoreResult result = BackupService().restoreFrom(folder);
            QVERIFY(!result.ok && result.databaseOpen);
            QCOMPARE(result.message, message);
            QVERIFY2(QDir(AppPaths::autoBackupBeforeRestoreDir()).isEmpty(), "nothing is touched");
        }
    }

    void thePreviewTellsWhatIsInside()
    {
        const BackupPreview preview = BackupService::inspect(m_backup);
        QVERIFY(preview.ok);
        QCOMPARE(preview.warnings, QStringList());
        QCOMPARE(preview.manifest.version, u"1.0.0"_s);
        QCOMPARE(preview.manifest.kind, u"手动备份"_s);
        QCOMPARE(preview.manifest.time, ProfileDao().load().lastBackupAt);
        QCOMPARE(preview.manifest.voucherFiles, 5);
        QCOMPARE(preview.voucherFiles, 5);
        qint64 bytes = QFileInfo(m_backup + u"/brixa.db"_s).size();
        for (const QByteArray& file : tree(m_backup + u"/voucher_assets"_s))
            bytes += file.size();
        QCOMPARE(preview.bytes, bytes);
        QCOMPARE(preview.companyName, u"甲公司"_s);
        QCOMPARE(preview.entries, 2);
        QCOMPARE(preview.vouchers, 1);
        QCOMPARE(preview.documents, 0);
        QCOMPARE(preview.newestEntry, QDate(2025, 3, 2));
    }

    void thePreviewLeavesTheFolderAsItIs()
    {
        // A database that asks for a log is the one that could leave one behind.
        const QString database = m_backup + u"/brixa.db"_s;
        QCOMPARE(TestDatabase::rowOfFile(database, u"PRAGMA journal_mode = WAL"_s), u"wal"_s);
        const auto before = tree(m_backup);
        const QDateTime modified = QFileInfo(m_backup).lastModified();
        QTest::qWait(20);
        QVERIFY(BackupService::inspect(m_backup).warnings.isEmpty());
        QCOMPARE(tree(m_backup), before);
        QCOMPARE(QFileInfo(m_backup).lastModified(), modified);
    }

    void thePreviewWarns_data()
    {
        addColumns<QByteArray, bool, QString>("manifest", "soundDatabase", "warning");
        addCase("fewer files than noted", QByteArray("凭证文件数：6\n"), true,
            u"备份清单登记 6 个凭证文件，实际有 5 个，备份可能不完整或已被改动。"_s);
        addCase("more files than noted", QByteArray("凭证文件数：0\n"), true,
            u"备份清单登记 0 个凭证文件，实际有 5 个，备份可能不完整或已被改动。"_s);
        addCase("nothing noted", QByteArray("产品：Brixa\n"), true,
            u"备份清单未登记凭证文件数，无法核对凭证是否完整。"_s);
        addCase("no database", QByteArray("凭证文件数：5\n"), false, u"备份中的数据库无法使用："_s);
    }

    void thePreviewWarns()
    {
        QFETCH(QByteArray, manifest);
        QFETCH(bool, soundDatabase);
        QVERIFY(put(m_backup + u"/backup_manifest.txt"_s, manifest));
        if (!soundDatabase)
            QVERIFY(put(m_backup + u"/brixa.db"_s, QByteArray(5000, 'x')));
        const BackupPreview preview = BackupService::inspect(m_backup);
        QVERIFY(preview.ok);
        QFETCH(QString, warning);
        QCOMPARE(preview.warnings.size(), 1);
        QVERIFY2(preview.warnings.value(0).startsWith(warning),
            qUtf8Printable(preview.warnings.value(0)));
        QCOMPARE(preview.entries.has_value(), soundDatabase);
    }

    void thePreviewWarnsOfALog()
    {
        QVERIFY(put(m_backup + u"/brixa.db-wal"_s, "entries"));
        QVERIFY(put(m_backup + u"/brixa.db-journal"_s, QByteArray("")));
        QCOMPARE(BackupService::inspect(m_backup).warnings,
            QStringList {
                u"备份中的数据库带有未合并的日志，其中的内容不会被恢复：brixa.db-wal"_s });
    }

    void thePreviewWarnsOfAnotherPassword_data()
    {
        addColumns<QString, QString, bool>("then", "now", "warned");
        addCase("none at any time", u""_s, u""_s, false);
        addCase("set since", u""_s, u"now"_s, false);
        addCase("the same", u"then"_s, u"then"_s, false);
        addCase("changed since", u"then"_s, u"now"_s, true);
        addCase("turned off since", u"then"_s, u""_s, true);
    }

    void thePreviewWarnsOfAnotherPassword()
    {
        const auto setPassword = [](const QString& hash) {
            return ProfileDao().setPassword(!hash.isEmpty(), hash, u"salt"_s);
        };
        QFETCH(QString, then);
        QFETCH(QString, now);
        QFETCH(bool, warned);
        QVERIFY(setPassword(then));
        const QTemporaryDir target;
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY(result.ok);
        QVERIFY(setPassword(now));
        const QStringList warnings = BackupService::inspect(result.folder).warnings;
        QCOMPARE(warnings.size(), warned ? 1 : 0);
        QCOMPARE(warnings.value(0).startsWith(u"备份的启动密码与现在的不同："_s), warned);
    }

    void thePreviewWarnsOfOtherDatabases_data()
    {
        addColumns<QString, QString>("script", "warning");
        addCase("a newer one", u"PRAGMA user_version = 4"_s,
            u"备份由更新版本的软件生成，恢复后部分内容可能无法显示或使用。"_s);
        addCase("one without a table", u"DROP TABLE documents"_s,
            u"备份中的数据库无法使用：不是本软件的数据库"_s);
        addCase("an older one without a table", u"DROP TABLE documents; PRAGMA user_version = 2"_s,
            u"备份中的部分数据表无法读取，备份可能不完整。"_s);
    }

    void thePreviewWarnsOfOtherDatabases()
    {
        QFETCH(QString, script);
        QCOMPARE(TestDatabase::runOnFile(m_backup + u"/brixa.db"_s, script), QString());
        QTEST(BackupService::inspect(m_backup).warnings.join(u'|'), "warning");
    }

private:
    std::unique_ptr<QTemporaryDir> m_target;
    QString m_backup;
};

static const RegisteredTest<TestBackupPreview> registered;

#include "TestBackupPreview.moc"
