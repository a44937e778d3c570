#include "core/AppPaths.h"
#include "core/TextRules.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "services/backup/BackupLayout.h"
#include "services/backup/BackupSample.h"
#include "services/backup/BackupService.h"
#include "services/backup/FolderCopy.h"
#include "support/DatabaseTestCase.h"
#include "support/FileSizeLimit.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/Warnings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;
using BackupSample::put;
using BackupSample::tree;

namespace {

QStringList entriesOf(const QString& folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

QByteArray lines(const QStringList& texts)
{
    return (texts.join(u'\n') + u'\n').toUtf8();
}

} // namespace

class TestBackup final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationVersion(u"1.0.0"_s); }

    void aBackupHoldsEverything()
    {
        QVERIFY(BackupSample::fill(u"甲公司"_s));
        const auto vouchers = tree(AppPaths::voucherAssetsDir());
        const QString content = BackupSample::signature();
        const QTemporaryDir target;
        const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        QCOMPARE(result.message, QString());

        QCOMPARE(entriesOf(target.path()), QStringList { QFileInfo(result.folder).fileName() });
        QVERIFY(QRegularExpression(u"^brixa_backup_\\d{8}_\\d{6}$"_s)
                    .match(entriesOf(target.path()).value(0))
                    .hasMatch());
        QCOMPARE(entriesOf(result.folder),
            (QStringList { u"backup_manifest.txt"_s, u"brixa.db"_s, u"voucher_assets"_s }));
        QCOMPARE(tree(result.folder + u"/voucher_assets"_s), vouchers);
        const QString copy = result.folder + u"/brixa.db"_s;
        QCOMPARE(TestDatabase::rowOfFile(copy, u"PRAGMA integrity_check"_s), u"ok"_s);
        QCOMPARE(TestDatabase::rowOfFile(copy, u"PRAGMA user_version"_s), u"3"_s);
        QCOMPARE(TestDatabase::rowOfFile(copy, u"SELECT group_concat(summary) FROM transactions"_s),
            u"甲公司,甲公司"_s);
        QCOMPARE(
            TestDatabase::rowOfFile(copy, u"SELECT last_backup_at FROM company_profile"_s), u"∅"_s);
        QCOMPARE(BackupSample::signature(), content);

        const QString noted = ProfileDao().load().lastBackupAt;
        QVERIFY(
            noted >= TextRules::timestampText(before) && noted <= TextRules::currentTimestamp());
        const QByteArray manifest = TestFile::bytesOf(result.folder + u"/backup_manifest.txt"_s);
        QCOMPARE(manifest,
            lines({ u"Brixa 备份清单（backup_manifest）"_s, u"产品：Brixa"_s, u"版本：V1.0.0"_s,
                u"备份类型：手动备份"_s, u"备份时间："_s + noted, u"数据库文件：brixa.db"_s,
                u"凭证文件数：5"_s, u"说明：本软件全程离线运行，本目录为本地数据完整副本。"_s }));
        QCOMPARE(BackupManifest::fromBytes(manifest).toBytes(), manifest);
    }

    void theManifestIsReadFromOtherHands()
    {
        const auto read = [](const QByteArray& bytes) {
            const BackupManifest manifest = BackupManifest::fromBytes(bytes);
            return u"%1|%2|%3"_s.arg(manifest.version, manifest.time,
                QString::number(manifest.voucherFiles.value_or(-1)));
        };
        // Saved by an editor with other line ends.
        QCOMPARE(read("版本：V1.0.0\r\n备份时间：2025-01-31 10:00:00\r\n凭证文件数：7\r\n"),
            u"1.0.0|2025-01-31 10:00:00|7"_s);
        QCOMPARE(read("凭证文件数：7"), u"||7"_s);
        QCOMPARE(read("凭证文件数：七\n"), u"||-1"_s);
        QCOMPARE(read("凭证文件数：-3\n"), u"||-1"_s);
        QCOMPARE(read("版本：V2\n"), u"2||-1"_s);
        QCOMPARE(read(QByteArray("\xff\xfe\x00\x01", 4)), u"||-1"_s);
        QCOMPARE(read({}), u"||-1"_s);
    }

    void copiesCanBeWritten()
    {
        const QString voucher = AppPaths::voucherAssetsDir() + u"/2025/a.pdf"_s;
        QVERIFY(put(voucher, "bytes"));
        QVERIFY(QFile::setPermissions(voucher, QFile::ReadOwner | QFile::ReadOther));
        const QTemporaryDir target;
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        const QFile::Permissions copied
            = QFile::permissions(result.folder + u"/voucher_assets/2025/a.pdf"_s);
        QVERIFY(copied.testFlag(QFile::WriteOwner));
        QVERIFY(!copied.testFlag(QFile::WriteOther));
    }

    void linksToFoldersAreNotFollowed()
    {
#ifdef Q_OS_UNIX
        const QTemporaryDir elsewhere;
        QVERIFY(put(elsewhere.filePath(u"folder/big"_s), "not ours"));
        QVERIFY(put(elsewhere.filePath(u"scan.pdf"_s), "a voucher kept elsewhere"));
        const QString vouchers = AppPaths::voucherAssetsDir();
        QVERIFY(QFile::link(elsewhere.filePath(u"folder"_s), vouchers + u"/away"_s));
        QVERIFY(QFile::link(vouchers, vouchers + u"/loop"_s));
        QVERIFY(QFile::link(elsewhere.filePath(u"scan.pdf"_s), vouchers + u"/scan.pdf"_s));
        const QTemporaryDir target;
        expectWarnings({ u"Not copied, a link to a folder: .*/away$"_s,
            u"Not copied, a link to a folder: .*/loop$"_s });
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY(result.ok);
        QVERIFY(result.message.startsWith(u"以下目录链接或特殊文件未包含在备份中：\n"_s));
        for (const QString& link : { u"/away"_s, u"/loop"_s })
            QVERIFY2(result.message.contains(vouchers + link), qUtf8Printable(result.message));
        const auto copied = tree(result.folder + u"/voucher_assets"_s);
        QCOMPARE(copied.keys(), QStringList { u"scan.pdf"_s });
        QCOMPARE(copied.value(u"scan.pdf"_s), QByteArray("a voucher kept elsewhere"));
        QCOMPARE(BackupService::inspect(result.folder).manifest.voucherFiles, 1);
#endif
    }

    void vouchersWhoseFileIsGoneAreNamed()
    {
        QVERIFY(BackupSample::fill(u"甲公司"_s));
        QCOMPARE(
            TestDatabase::run({ u"INSERT INTO vouchers (name, voucher_type, voucher_date, "
                                "original_file_name, stored_path, file_ext, file_size, sha256) "
                                "VALUES ('回单 %1', 'bank_receipt', '2025-01-01', 'a.pdf', "
                                "'voucher_assets/gone.pdf', 'pdf', 1, 'x')"_s }),
            QString());
        const QTemporaryDir target;
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY(result.ok);
        QVERIFY(!result.isComplete);
        QVERIFY2(result.message.contains(u"\n「回单 %1」（voucher_assets/gone.pdf）\n"_s),
            qUtf8Printable(result.message));
        QCOMPARE(BackupService::inspect(result.folder).warnings,
            QStringList { u"备份中有 1 张凭证没有文件，恢复后这些凭证将无法打开。"_s });
    }

    void aBrokenLinkStopsTheBackup()
    {
#ifdef Q_OS_UNIX
        const QString link = AppPaths::voucherAssetsDir() + u"/scan.pdf"_s;
        QVERIFY(QFile::link(u"/nonexistent/scan.pdf"_s, link));
        const QTemporaryDir target;
        expectWarnings({ u"Copying files: "_s, u"Backup failed: "_s });
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY2(!result.ok, "a voucher would be missing silently");
        QCOMPARE(result.message, u"复制失败："_s + link);
        QCOMPARE(entriesOf(target.path()), QStringList());
#endif
    }

    void pipesAreLeftOut()
    {
#ifdef Q_OS_UNIX
        const QString pipe = AppPaths::voucherAssetsDir() + u"/pipe"_s;
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        const QTemporaryDir target;
        expectWarnings({ u"Not copied, no file: .*/pipe$"_s });
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY(result.ok);
        QCOMPARE(result.message, u"以下目录链接或特殊文件未包含在备份中：\n"_s + pipe);
        QVERIFY(tree(result.folder + u"/voucher_assets"_s).isEmpty());
#endif
    }

    void aVoucherFolderOnAnotherDiskIsCopied()
    {
#ifdef Q_OS_UNIX
        const QTemporaryDir disk;
        QVERIFY(put(disk.filePath(u"2025/a.pdf"_s), "bytes"));
        QVERIFY(QDir().rmdir(AppPaths::voucherAssetsDir()));
        QVERIFY(QFile::link(disk.path(), AppPaths::voucherAssetsDir()));
        const QTemporaryDir target;
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY(result.ok);
        QCOMPARE(tree(result.folder + u"/voucher_assets"_s), tree(disk.path()));
        expectWarnings({ u"Backup failed: "_s });
        QVERIFY2(
            !BackupService().backupTo(disk.filePath(u"2025"_s)).ok, "inside the voucher folder");
#endif
    }

    void withoutAVoucherFolderTheCopyIsEmpty()
    {
        QVERIFY(QDir().rmdir(AppPaths::voucherAssetsDir()));
        const QTemporaryDir target;
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY(result.ok);
        QVERIFY(QDir(result.folder + u"/voucher_assets"_s).isEmpty());
        QCOMPARE(BackupService::inspect(result.folder).manifest.voucherFiles, 0);
    }

    void twoBackupsInOneSecondAreTwo()
    {
        const QTemporaryDir target;
        const QDateTime time(QDate(2025, 1, 31), QTime(9, 5, 7));
        const QString first = target.filePath(u"brixa_backup_20250131_090507"_s);
        QCOMPARE(BackupLayout::createFolder(target.path(), time), first);
        QCOMPARE(BackupLayout::createFolder(target.path(), time), first + u"_2"_s);
        QVERIFY(put(first + u"_3"_s, "a file takes the name too"));
        QCOMPARE(BackupLayout::createFolder(target.path(), time), first + u"_4"_s);

        const BackupResult one = BackupService().backupTo(target.path());
        const BackupResult two = BackupService().backupTo(target.path());
        QVERIFY(one.ok && two.ok);
        QVERIFY(one.folder != two.folder);
        QVERIFY(BackupService::validateBackup(one.folder).ok);
        QVERIFY(BackupService::validateBackup(two.folder).ok);
    }

    void takenNamesEndTheSearch()
    {
        const QTemporaryDir target;
        const QDateTime time(QDate(2025, 1, 31), QTime(9, 5, 7));
        const QString base = BackupLayout::folderFor(target.path(), time);
        QVERIFY(QDir().mkdir(base));
        for (int number = 2; number <= 998; ++number)
            QVERIFY(QDir().mkdir(base + u'_' + QString::number(number)));
        QCOMPARE(BackupLayout::createFolder(target.path(), time), base + u"_999"_s);
        const auto before = entriesOf(target.path()).size();
        QVERIFY(!BackupLayout::createFolder(target.path(), time));
        QCOMPARE(entriesOf(target.path()).size(), before);
    }

    // The path of the parent is as long as the system allows, or nearly so.
    void aFolderThatCannotBeCreatedIsTold()
    {
#ifdef Q_OS_LINUX
        const QTemporaryDir root;
        QString parent = root.path();
        while (parent.size() < 4'080)
            parent += u'/' + QString(std::min(qsizetype(200), 4'080 - parent.size()), u'x');
        QVERIFY(QDir().mkpath(parent));
        expectWarnings({ u"Backup failed: "_s });
        const BackupResult result = BackupService().backupTo(parent);
        QVERIFY(!result.ok);
        QVERIFY(result.message.startsWith(u"无法创建备份目录："_s + parent + u"/brixa_backup_"_s));
        QCOMPARE(entriesOf(parent), QStringList());
#endif
    }

    void unusableTargetsAreRefused_data()
    {
        QTest::addColumn<QString>("target");
        addCase("nothing chosen", QString());
        addCase("missing", AppPaths::exportsDir() + u"/missing"_s);
        addCase("a file", AppPaths::databasePath());
        addCase("the voucher folder", AppPaths::voucherAssetsDir());
        addCase(
            "the voucher folder by a detour", AppPaths::exportsDir() + u"/../voucher_assets/"_s);
        addCase("inside the voucher folder", AppPaths::voucherAssetsDir() + u"/2025/01"_s);
        addCase("inside it by a link", AppPaths::exportsDir() + u"/link/01"_s);
        addCase(
            "inside it by the parent of a link's target", AppPaths::exportsDir() + u"/link/.."_s);
    }

    void unusableTargetsAreRefused()
    {
        QFETCH(QString, target);
        const QString vouchers = AppPaths::voucherAssetsDir();
        QVERIFY(QDir().mkpath(vouchers + u"/2025/01"_s));
        QVERIFY(QFile::link(vouchers + u"/2025"_s, AppPaths::exportsDir() + u"/link"_s));
        const auto before = tree(AppPaths::dataDir()).keys();
        expectWarnings({ u"Backup failed: "_s });
        const BackupResult result = BackupService().backupTo(target);
        QVERIFY(!result.ok);
        QCOMPARE(result.message, u"备份目标目录不可用："_s + target);
        QCOMPARE(result.folder, QString());
        QCOMPARE(tree(AppPaths::dataDir()).keys(), before);
    }

    void failuresLeaveNothingBehind_data()
    {
        addColumns<QStringList, QString>("statements", "message");
        addCase("the log cannot be emptied during a write",
            QStringList { u"BEGIN"_s, u"UPDATE company_profile SET phone = '1'"_s },
            u"^WAL 检查点失败：database table is locked"_s);
        addCase("no copy within a transaction", QStringList { u"BEGIN"_s },
            u"^数据库副本生成失败：cannot VACUUM from within a tr"_s);
    }

    void failuresLeaveNothingBehind()
    {
        QFETCH(QStringList, statements);
        QFETCH(QString, message);
        const QTemporaryDir target;
        QCOMPARE(TestDatabase::run(statements), QString());
        expectWarnings({ u"Backup failed: "_s });
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY(!result.ok);
        QVERIFY2(
            result.message.contains(QRegularExpression(message)), qUtf8Printable(result.message));
        QCOMPARE(entriesOf(target.path()), QStringList());
        QCOMPARE(TestDatabase::run({ u"ROLLBACK"_s }), QString());
        QVERIFY(BackupService().backupTo(target.path()).ok);
    }

    void aFullDiskLeavesNothingBehind_data()
    {
        addColumns<qint64, QStringList, QString>("most", "warnings", "message");
        addCase("for the vouchers", qint64(1'000'000),
            QStringList { u"Copying files: .*File too large"_s },
            u"复制失败："_s + AppPaths::voucherAssetsDir() + u"/large.pdf"_s);
        addCase("for the database", qint64(20'000), QStringList(),
            u"数据库副本生成失败：数据库文件读写失败，请检查磁盘（"_s);
    }

    void aFullDiskLeavesNothingBehind()
    {
#ifdef Q_OS_UNIX
        QFETCH(qint64, most);
        QFETCH(QStringList, warnings);
        QFETCH(QString, message);
        const QString voucher = AppPaths::voucherAssetsDir() + u"/large.pdf"_s;
        QVERIFY(put(voucher, QByteArray(3'000'000, 'x')));
        const QTemporaryDir target;
        QVERIFY(DatabaseManager::instance().checkpoint());
        expectWarnings(warnings + QStringList { u"Backup failed: "_s });
        BackupResult result;
        {
            const FileSizeLimit limit(most);
            result = BackupService().backupTo(target.path());
        }
        QVERIFY(!result.ok);
        QVERIFY2(result.message.startsWith(message), qUtf8Printable(result.message));
        QCOMPARE(entriesOf(target.path()), QStringList());
        QCOMPARE(ProfileDao().load().lastBackupAt, QString());
#endif
    }

    void aTimeThatCannotBeNotedDoesNotUndoTheBackup()
    {
        QCOMPARE(TestDatabase::run({ u"CREATE TRIGGER no_time BEFORE UPDATE ON company_profile "
                                     "BEGIN SELECT RAISE(ABORT, 'no'); END"_s }),
            QString());
        const QTemporaryDir target;
        expectWarnings({ u"SQL error: no"_s });
        const BackupResult result = BackupService().backupTo(target.path());
        QVERIFY(result.ok);
        QCOMPARE(result.message, u"备份完成但备份时间未能写入档案"_s);
        QVERIFY(BackupService::validateBackup(result.folder).ok);
    }

    // The text of the path alone points into the voucher folder.
    void aPathIsTakenAsTheSystemTakesIt()
    {
#ifdef Q_OS_UNIX
        const QTemporaryDir elsewhere;
        QVERIFY(QDir(elsewhere.path()).mkdir(u"inner"_s));
        const QString link = AppPaths::voucherAssetsDir() + u"/link"_s;
        QVERIFY(QFile::link(elsewhere.filePath(u"inner"_s), link));
        expectWarnings({ u"Not copied, a link to a folder: "_s });
        const BackupResult result = BackupService().backupTo(link + u"/.."_s);
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        QCOMPARE(QFileInfo(result.folder).path(), elsewhere.path());
        QCOMPARE(entriesOf(AppPaths::voucherAssetsDir()), QStringList { u"link"_s });
#endif
    }

    void theProgressCountsEveryFile()
    {
        QVERIFY(BackupSample::fill(u"甲公司"_s));
        QStringList seen;
        BackupService service([&](int done, int total) {
            seen += QString::number(done) + u'/' + QString::number(total);
        });
        const QTemporaryDir target;
        const BackupResult backup = service.backupTo(target.path());
        QVERIFY(backup.ok);
        QCOMPARE(seen.join(u' '), u"1/6 2/6 3/6 4/6 5/6 6/6"_s);
        seen.clear();
        QVERIFY(service.restoreFrom(backup.folder).ok);
        QCOMPARE(seen.size(), 12);
        QCOMPARE(seen.first() + u' ' + seen.last(), u"1/12 12/12"_s);
    }

    void foldersAreCopiedOverOthers()
    {
        const QTemporaryDir root;
        QVERIFY(put(root.filePath(u"from/a/b.txt"_s), "new"));
        QVERIFY(put(root.filePath(u"to/a/b.txt"_s), "an older and longer one"));
        QVERIFY(put(root.filePath(u"to/kept.txt"_s), "kept"));
        const FolderCopy::Listing listing = FolderCopy::list(root.filePath(u"from"_s));
        QCOMPARE(FolderCopy::sizeOf(root.filePath(u"from"_s), listing), 3);
        int copied = 0;
        QVERIFY(!FolderCopy::copy(
            root.filePath(u"from"_s), listing, root.filePath(u"to"_s), [&] { ++copied; }));
        QCOMPARE(copied, 1);
        QCOMPARE(TestFile::bytesOf(root.filePath(u"to/a/b.txt"_s)), QByteArray("new"));
        QCOMPARE(TestFile::bytesOf(root.filePath(u"to/kept.txt"_s)), QByteArray("kept"));
    }

    void whatIsInTheWayIsTold_data()
    {
        addColumns<QString, QString>("obstacle", "message");
        addCase("a file in the target's place", u"to"_s, u"无法创建目录：%1/to"_s);
        addCase("a file in a folder's place", u"to/a"_s, u"无法创建目录：%1/to/a"_s);
        addCase(
            "a full folder in a file's place", u"to/a/b.txt/c"_s, u"无法覆盖文件：%1/to/a/b.txt"_s);
    }

    void whatIsInTheWayIsTold()
    {
        QFETCH(QString, obstacle);
        QFETCH(QString, message);
        const QTemporaryDir root;
        QVERIFY(put(root.filePath(u"from/a/b.txt"_s), "new"));
        QVERIFY(put(root.filePath(obstacle), "in the way"));
        expectWarnings({ u"Copying files: "_s });
        const auto problem = FolderCopy::copy(root.filePath(u"from"_s),
            FolderCopy::list(root.filePath(u"from"_s)), root.filePath(u"to"_s), [] {});
        QCOMPARE(problem.value_or(QString()), message.arg(root.path()));
        QCOMPARE(TestFile::bytesOf(root.filePath(obstacle)), QByteArray("in the way"));
    }
};

static const RegisteredTest<TestBackup> registered;

#include "TestBackup.moc"
