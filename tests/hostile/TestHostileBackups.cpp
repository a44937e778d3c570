#include "core/AppPaths.h"
#include "hostile/LogFilter.h"
#include "services/backup/BackupSample.h"
#include "services/backup/BackupService.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;
using BackupSample::tree;

class TestHostileBackups final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        QVERIFY(BackupSample::fill(u"旧"_s));
        m_outside = std::make_unique<QTemporaryDir>();
        QVERIFY(BackupSample::put(m_outside->filePath(u"private/letter"_s), "not ours"));
        const BackupResult backup = BackupService().backupTo(m_outside->path());
        QVERIFY2(backup.ok, qUtf8Printable(backup.message));
        m_backup = backup.folder;
    }

#ifdef Q_OS_UNIX
    void linksLeadNowhere_data()
    {
        addColumns<QString>("target");
        addCase("a folder outside", u"../../private"_s);
        addCase("the root", u"/"_s);
        addCase("a loop", u"."_s);
        addCase("a device", u"/dev/null"_s);
        addCase("a pipe", u"pipe"_s);
    }

    void linksLeadNowhere()
    {
        QFETCH(QString, target);
        const QTemporaryDir pipes;
        const QString pipe = pipes.filePath(u"pipe"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(QFile::link(
            target == u"pipe"_s ? pipe : target, m_backup + u"/voucher_assets/link.pdf"_s));
        const auto before = tree(m_outside->path());
        const LogFilter log({ u"Not copied, "_s });
        const BackupPreview preview = BackupService::inspect(m_backup);
        QVERIFY(preview.ok);
        QCOMPARE(preview.warnings,
            QStringList { u"备份中有 1 个目录链接或特殊文件，其中的内容不会被恢复。"_s });
        const RestoreResult result = BackupService().restoreFrom(m_backup);
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        QVERIFY(!QFileInfo::exists(AppPaths::voucherAssetsDir() + u"/link.pdf"_s));
        QCOMPARE(BackupSample::strangersInDataDir(), QStringList());
        QCOMPARE(tree(m_outside->path()), before);
    }
#endif

    void whatIsNoBackupChangesNothing_data()
    {
        addColumns<QString, QString, bool>("script", "message", "isRefusedAtOnce");
        const QString foreign = u"不是本软件的数据库"_s;
        const QString endless = u"CREATE VIEW %1 AS WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL "
                                "SELECT x + 1 FROM n) SELECT x AS id FROM n"_s;
        addCase(
            "a folder as the database", QString(), u"缺少数据库文件 brixa.db 或文件为空"_s, true);
        addCase("rows without end", u"DROP TABLE documents; "_s + endless.arg(u"Documents"_s),
            foreign, false);
        addCase("vouchers without end",
            u"DROP TABLE vouchers; "_s
                + endless.arg(u"vouchers"_s).replace(u"AS id"_s, u"AS stored_path"_s),
            foreign, false);
        addCase("a profile without end",
            u"DROP TABLE company_profile; "_s + endless.arg(u"company_profile"_s), foreign, false);
        addCase("another program's database", u"PRAGMA user_version = 0"_s, foreign, false);
    }

    void whatIsNoBackupChangesNothing()
    {
        QFETCH(QString, script);
        QFETCH(QString, message);
        QFETCH(bool, isRefusedAtOnce);
        const QString database = m_backup + u"/brixa.db"_s;
        if (script.isEmpty()) {
            QVERIFY(QFile::remove(database));
            QVERIFY(BackupSample::put(database + u"/inside"_s, "a"));
        } else {
            QCOMPARE(TestDatabase::runOnFile(database, script), QString());
        }
        const auto before = tree(m_outside->path());
        const QStringList rows = TestDatabase::dump();
        const auto vouchers = tree(AppPaths::voucherAssetsDir());
        const LogFilter log({ u"Restore refused: "_s, u"Restore failed: "_s });
        const BackupPreview preview = BackupService::inspect(m_backup);
        QCOMPARE(preview.ok, !isRefusedAtOnce);
        QVERIFY((preview.message + preview.warnings.join(u'\n')).contains(message));
        const RestoreResult result = BackupService().restoreFrom(m_backup);
        QVERIFY(!result.ok && result.databaseOpen);
        QVERIFY2(result.message.contains(message), qUtf8Printable(result.message));
        QCOMPARE(TestDatabase::dump(), rows);
        QCOMPARE(tree(AppPaths::voucherAssetsDir()), vouchers);
        QCOMPARE(tree(m_outside->path()), before);
    }

    void aManifestMayLie()
    {
        const QByteArray lies
            = "凭证文件数：-5\n版本：V<b>%1</b>\n备份类型：" + QByteArray(200'000, 'x');
        QVERIFY(TestFile::put(m_backup + u"/backup_manifest.txt"_s, lies));
        const BackupPreview preview = BackupService::inspect(m_backup);
        QVERIFY(preview.ok);
        QCOMPARE(preview.manifest.version, u"<b>%1</b>"_s);
        QVERIFY(!preview.manifest.voucherFiles && preview.manifest.kind.size() < 65'536);
        QCOMPARE(preview.warnings.size(), 1);
        QCOMPARE(preview.voucherFiles, 5);
        QCOMPARE(preview.entries, 2);
    }

private:
    std::unique_ptr<QTemporaryDir> m_outside;
    QString m_backup;
};

static const RegisteredTest<TestHostileBackups> registered;

#include "TestHostileBackups.moc"
