#include "services/backup/TestBackup.h"

#include "core/AppPaths.h"
#include "core/TextRules.h"
#include "db/ProfileDao.h"
#include "services/backup/BackupLayout.h"
#include "services/backup/BackupSample.h"
#include "services/backup/BackupService.h"
#include "services/backup/FolderCopy.h"
#include "support/FileSizeLimit.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

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

void expectWarning(const QString& pattern)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(pattern));
}

// A folder that passes for a backup.
bool makeBackup(const QString& folder, const QByteArray& manifest, const QByteArray& database)
{
    return QDir().mkpath(folder)
        && (manifest.isNull() || put(BackupLayout::manifestIn(folder), manifest))
        && (database.isNull() || put(BackupLayout::databaseIn(folder), database));
}

QByteArray lines(const QStringList& texts)
{
    return (texts.join(u'\n') + u'\n').toUtf8();
}

} // namespace

void TestBackup::aBackupHoldsEverything()
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
    QVERIFY(noted >= TextRules::timestampText(before) && noted <= TextRules::currentTimestamp());
}

void TestBackup::theManifestReadsAsWritten()
{
    QVERIFY(BackupSample::fill(u"甲公司"_s));
    const QTemporaryDir target;
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY(result.ok);
    const QByteArray bytes = TestFile::bytesOf(result.folder + u"/backup_manifest.txt"_s);
    const QString time = ProfileDao().load().lastBackupAt;
    QCOMPARE(bytes,
        lines({ u"Brixa 备份清单（backup_manifest）"_s, u"产品：Brixa"_s, u"版本：V1.0.0"_s,
            u"备份类型：手动备份"_s, u"备份时间："_s + time, u"数据库文件：brixa.db"_s,
            u"凭证文件数：5"_s, u"说明：本软件全程离线运行，本目录为本地数据完整副本。"_s }));
    const BackupManifest manifest = BackupManifest::fromBytes(bytes);
    QCOMPARE(manifest.toBytes(), bytes);
}

void TestBackup::theManifestIsReadFromOtherHands_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("read");
    QTest::newRow("saved by an editor with other line ends")
        << QByteArray("版本：V1.0.0\r\n备份时间：2025-01-31 10:00:00\r\n凭证文件数：7\r\n")
        << u"1.0.0|2025-01-31 10:00:00|7"_s;
    QTest::newRow("without a last line feed") << QByteArray("凭证文件数：7") << u"||7"_s;
    QTest::newRow("a count that is no number") << QByteArray("凭证文件数：七\n") << u"||-1"_s;
    QTest::newRow("a negative count") << QByteArray("凭证文件数：-3\n") << u"||-1"_s;
    QTest::newRow("no count") << QByteArray("版本：V2\n") << u"2||-1"_s;
    QTest::newRow("garbage") << QByteArray("\xff\xfe\x00\x01", 4) << u"||-1"_s;
    QTest::newRow("nothing") << QByteArray() << u"||-1"_s;
}

void TestBackup::theManifestIsReadFromOtherHands()
{
    QFETCH(QByteArray, bytes);
    const BackupManifest manifest = BackupManifest::fromBytes(bytes);
    const QStringList read { manifest.version, manifest.time,
        QString::number(manifest.voucherFiles.value_or(-1)) };
    QTEST(read.join(u'|'), "read");
}

void TestBackup::copiesCanBeWritten()
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

void TestBackup::linksToFoldersAreNotFollowed()
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
    expectWarning(u"^Not copied, a link to a folder: .*/away$"_s);
    expectWarning(u"^Not copied, a link to a folder: .*/loop$"_s);
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

void TestBackup::aBrokenLinkStopsTheBackup()
{
#ifdef Q_OS_UNIX
    const QString link = AppPaths::voucherAssetsDir() + u"/scan.pdf"_s;
    QVERIFY(QFile::link(u"/nonexistent/scan.pdf"_s, link));
    const QTemporaryDir target;
    expectWarning(u"^Copying files: "_s);
    expectWarning(u"^Backup failed: "_s);
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY2(!result.ok, "a voucher would be missing silently");
    QCOMPARE(result.message, u"复制失败："_s + link);
    QCOMPARE(entriesOf(target.path()), QStringList());
#endif
}

void TestBackup::pipesAreLeftOut()
{
#ifdef Q_OS_UNIX
    const QString pipe = AppPaths::voucherAssetsDir() + u"/pipe"_s;
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QTemporaryDir target;
    expectWarning(u"^Not copied, no file: .*/pipe$"_s);
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY(result.ok);
    QCOMPARE(result.message, u"以下目录链接或特殊文件未包含在备份中：\n"_s + pipe);
    QVERIFY(tree(result.folder + u"/voucher_assets"_s).isEmpty());
#endif
}

void TestBackup::aVoucherFolderOnAnotherDiskIsCopied()
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
    expectWarning(u"^Backup failed: "_s);
    QVERIFY2(!BackupService().backupTo(disk.filePath(u"2025"_s)).ok, "inside the voucher folder");
#endif
}

void TestBackup::withoutAVoucherFolderTheCopyIsEmpty()
{
    QVERIFY(QDir().rmdir(AppPaths::voucherAssetsDir()));
    const QTemporaryDir target;
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY(result.ok);
    QVERIFY(QDir(result.folder + u"/voucher_assets"_s).isEmpty());
    QCOMPARE(BackupService::inspect(result.folder).manifest.voucherFiles, 0);
}

void TestBackup::theFolderMayHaveAnyName()
{
    QVERIFY(BackupSample::fill(u"甲公司"_s));
    const QTemporaryDir root;
    for (const QString& name : { u"it's 100% #1? 账本;--"_s, u"a\"b %1 %2"_s, u"''"_s }) {
        QVERIFY(QDir(root.path()).mkdir(name));
        const BackupResult result = BackupService().backupTo(root.filePath(name));
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        const BackupPreview preview = BackupService::inspect(result.folder);
        QCOMPARE(preview.warnings, QStringList());
        QCOMPARE(preview.entries, 2);
    }
}

void TestBackup::twoBackupsInOneSecondAreTwo()
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

void TestBackup::takenNamesEndTheSearch()
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
void TestBackup::aFolderThatCannotBeCreatedIsTold()
{
#ifdef Q_OS_LINUX
    const QTemporaryDir root;
    QString parent = root.path();
    while (parent.size() < 4'080)
        parent += u'/' + QString(std::min(qsizetype(200), 4'080 - parent.size()), u'x');
    QVERIFY(QDir().mkpath(parent));
    expectWarning(u"^Backup failed: "_s);
    const BackupResult result = BackupService().backupTo(parent);
    QVERIFY(!result.ok);
    QVERIFY(result.message.startsWith(u"无法创建备份目录："_s + parent + u"/brixa_backup_"_s));
    QCOMPARE(entriesOf(parent), QStringList());
#endif
}

void TestBackup::unusableTargetsAreRefused_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("nothing chosen") << QString();
    QTest::newRow("missing") << AppPaths::exportsDir() + u"/missing"_s;
    QTest::newRow("a file") << AppPaths::databasePath();
    QTest::newRow("the voucher folder") << AppPaths::voucherAssetsDir();
    QTest::newRow("the voucher folder by a detour")
        << AppPaths::exportsDir() + u"/../voucher_assets/"_s;
    QTest::newRow("inside the voucher folder") << AppPaths::voucherAssetsDir() + u"/2025/01"_s;
    QTest::newRow("inside it by a link") << AppPaths::exportsDir() + u"/link/01"_s;
    QTest::newRow("inside it by the parent of a link's target")
        << AppPaths::exportsDir() + u"/link/.."_s;
}

void TestBackup::unusableTargetsAreRefused()
{
    QFETCH(QString, target);
    const QString vouchers = AppPaths::voucherAssetsDir();
    QVERIFY(QDir().mkpath(vouchers + u"/2025/01"_s));
    QVERIFY(QFile::link(vouchers + u"/2025"_s, AppPaths::exportsDir() + u"/link"_s));
    const auto before = tree(AppPaths::dataDir()).keys();
    expectWarning(u"^Backup failed: "_s);
    const BackupResult result = BackupService().backupTo(target);
    QVERIFY(!result.ok);
    QCOMPARE(result.message, u"备份目标目录不可用："_s + target);
    QCOMPARE(result.folder, QString());
    QCOMPARE(tree(AppPaths::dataDir()).keys(), before);
}

void TestBackup::failuresLeaveNothingBehind_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<QString>("message");
    QTest::newRow("the log cannot be emptied during a write")
        << QStringList { u"BEGIN"_s, u"UPDATE company_profile SET phone = '1'"_s }
        << u"^WAL 检查点失败：database table is locked"_s;
    QTest::newRow("no copy within a transaction")
        << QStringList { u"BEGIN"_s } << u"^数据库副本生成失败：cannot VACUUM from within a tr"_s;
}

void TestBackup::failuresLeaveNothingBehind()
{
    QFETCH(QStringList, statements);
    QFETCH(QString, message);
    const QTemporaryDir target;
    QCOMPARE(TestDatabase::run(statements), QString());
    expectWarning(u"^Backup failed: "_s);
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY(!result.ok);
    QVERIFY2(result.message.contains(QRegularExpression(message)), qUtf8Printable(result.message));
    QCOMPARE(entriesOf(target.path()), QStringList());
    QCOMPARE(TestDatabase::run({ u"ROLLBACK"_s }), QString());
    QVERIFY(BackupService().backupTo(target.path()).ok);
}

void TestBackup::aFullDiskLeavesNothingBehind()
{
#ifdef Q_OS_UNIX
    const QString voucher = AppPaths::voucherAssetsDir() + u"/large.pdf"_s;
    QVERIFY(put(voucher, QByteArray(3'000'000, 'x')));
    const QTemporaryDir target;
    expectWarning(u"^Copying files: .*File too large"_s);
    expectWarning(u"^Backup failed: "_s);
    BackupResult result;
    {
        const FileSizeLimit limit(1'000'000);
        result = BackupService().backupTo(target.path());
    }
    QVERIFY(!result.ok);
    QCOMPARE(result.message, u"复制失败："_s + voucher);
    QCOMPARE(entriesOf(target.path()), QStringList());
    QCOMPARE(ProfileDao().load().lastBackupAt, QString());
#endif
}

void TestBackup::aTimeThatCannotBeNotedDoesNotUndoTheBackup()
{
    QCOMPARE(TestDatabase::run({ u"CREATE TRIGGER no_time BEFORE UPDATE ON company_profile "
                                 "BEGIN SELECT RAISE(ABORT, 'no'); END"_s }),
        QString());
    const QTemporaryDir target;
    expectWarning(u"^SQL error: no"_s);
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY(result.ok);
    QCOMPARE(result.message, u"备份完成但备份时间未能写入档案"_s);
    QVERIFY(BackupService::validateBackup(result.folder).ok);
}

// The text of the path alone points into the voucher folder.
void TestBackup::aPathIsTakenAsTheSystemTakesIt()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir elsewhere;
    QVERIFY(QDir(elsewhere.path()).mkdir(u"inner"_s));
    const QString link = AppPaths::voucherAssetsDir() + u"/link"_s;
    QVERIFY(QFile::link(elsewhere.filePath(u"inner"_s), link));
    expectWarning(u"^Not copied, a link to a folder: "_s);
    const BackupResult result = BackupService().backupTo(link + u"/.."_s);
    QVERIFY2(result.ok, qUtf8Printable(result.message));
    QCOMPARE(QFileInfo(result.folder).path(), elsewhere.path());
    QCOMPARE(entriesOf(AppPaths::voucherAssetsDir()), QStringList { u"link"_s });
#endif
}

void TestBackup::theProgressCountsEveryFile()
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

void TestBackup::foldersAreCopiedOverOthers()
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

void TestBackup::whatIsInTheWayIsTold_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QString>("message");
    QTest::newRow("a file in the target's place") << u"to"_s << u"无法创建目录：%1/to"_s;
    QTest::newRow("a file in a folder's place") << u"to/a"_s << u"无法创建目录：%1/to/a"_s;
    QTest::newRow("a full folder in a file's place")
        << u"to/a/b.txt/c"_s << u"无法覆盖文件：%1/to/a/b.txt"_s;
}

void TestBackup::whatIsInTheWayIsTold()
{
    QFETCH(QString, obstacle);
    QFETCH(QString, message);
    const QTemporaryDir root;
    QVERIFY(put(root.filePath(u"from/a/b.txt"_s), "new"));
    QVERIFY(put(root.filePath(obstacle), "in the way"));
    expectWarning(u"^Copying files: "_s);
    const auto problem = FolderCopy::copy(root.filePath(u"from"_s),
        FolderCopy::list(root.filePath(u"from"_s)), root.filePath(u"to"_s), [] {});
    QCOMPARE(problem.value_or(QString()), message.arg(root.path()));
    QCOMPARE(TestFile::bytesOf(root.filePath(obstacle)), QByteArray("in the way"));
}

void TestBackup::invalidFoldersAreRefused_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<QByteArray>("database");
    QTest::addColumn<QString>("message");
    const QString noManifest = u"缺少备份清单 backup_manifest.txt，不是有效备份目录"_s;
    const QString noDatabase = u"缺少数据库文件 brixa.db 或文件为空"_s;
    QTest::newRow("neither") << QByteArray() << QByteArray() << noManifest;
    QTest::newRow("no manifest") << QByteArray() << QByteArray("db") << noManifest;
    QTest::newRow("no database") << QByteArray("m") << QByteArray() << noDatabase;
    QTest::newRow("an empty database") << QByteArray("m") << QByteArray("") << noDatabase;
    QTest::newRow("both") << QByteArray("") << QByteArray("db") << QString();
}

void TestBackup::invalidFoldersAreRefused()
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
        expectWarning(u"^Restore refused: "_s);
        const RestoreResult result = BackupService().restoreFrom(folder);
        QVERIFY(!result.ok && result.databaseOpen);
        QCOMPARE(result.message, message);
        QVERIFY2(QDir(AppPaths::autoBackupBeforeRestoreDir()).isEmpty(), "nothing is touched");
    }
}

void TestBackup::thePreviewTellsWhatIsInside()
{
    QVERIFY(BackupSample::fill(u"甲公司"_s));
    const QTemporaryDir target;
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY2(result.ok, qUtf8Printable(result.message));
    const BackupPreview preview = BackupService::inspect(result.folder);
    QVERIFY(preview.ok);
    QCOMPARE(preview.warnings, QStringList());
    QCOMPARE(preview.manifest.version, u"1.0.0"_s);
    QCOMPARE(preview.manifest.kind, u"手动备份"_s);
    QCOMPARE(preview.manifest.time, ProfileDao().load().lastBackupAt);
    QCOMPARE(preview.manifest.voucherFiles, 5);
    QCOMPARE(preview.voucherFiles, 5);
    qint64 bytes = QFileInfo(result.folder + u"/brixa.db"_s).size();
    for (const QByteArray& file : tree(result.folder + u"/voucher_assets"_s))
        bytes += file.size();
    QCOMPARE(preview.bytes, bytes);
    QCOMPARE(preview.companyName, u"甲公司"_s);
    QCOMPARE(preview.entries, 2);
    QCOMPARE(preview.vouchers, 1);
    QCOMPARE(preview.documents, 0);
    QCOMPARE(preview.newestEntry, QDate(2025, 3, 2));
}

void TestBackup::thePreviewLeavesTheFolderAsItIs()
{
    const QTemporaryDir target;
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY2(result.ok, qUtf8Printable(result.message));
    // A database that asks for a log is the one that could leave one behind.
    const QString database = result.folder + u"/brixa.db"_s;
    QCOMPARE(TestDatabase::rowOfFile(database, u"PRAGMA journal_mode = WAL"_s), u"wal"_s);
    const auto before = tree(result.folder);
    const QDateTime modified = QFileInfo(result.folder).lastModified();
    QTest::qWait(20);
    QVERIFY(BackupService::inspect(result.folder).warnings.isEmpty());
    QCOMPARE(tree(result.folder), before);
    QCOMPARE(QFileInfo(result.folder).lastModified(), modified);
}

void TestBackup::thePreviewWarns_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<bool>("soundDatabase");
    QTest::addColumn<QString>("warning");
    QTest::newRow("fewer files than noted")
        << QByteArray("凭证文件数：6\n") << true
        << u"备份清单登记 6 个凭证文件，实际有 5 个，备份可能不完整或已被改动。"_s;
    QTest::newRow("more files than noted")
        << QByteArray("凭证文件数：0\n") << true
        << u"备份清单登记 0 个凭证文件，实际有 5 个，备份可能不完整或已被改动。"_s;
    QTest::newRow("nothing noted") << QByteArray("产品：Brixa\n") << true
                                   << u"备份清单未登记凭证文件数，无法核对凭证是否完整。"_s;
    QTest::newRow("no database") << QByteArray("凭证文件数：5\n") << false
                                 << u"备份中的数据库无法使用："_s;
}

void TestBackup::thePreviewWarns()
{
    QFETCH(QByteArray, manifest);
    QFETCH(bool, soundDatabase);
    QVERIFY(BackupSample::fill(u"甲公司"_s));
    const QTemporaryDir target;
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY(put(result.folder + u"/backup_manifest.txt"_s, manifest));
    if (!soundDatabase)
        QVERIFY(put(result.folder + u"/brixa.db"_s, QByteArray(5000, 'x')));
    const BackupPreview preview = BackupService::inspect(result.folder);
    QVERIFY(preview.ok);
    QFETCH(QString, warning);
    QCOMPARE(preview.warnings.size(), 1);
    QVERIFY2(
        preview.warnings.value(0).startsWith(warning), qUtf8Printable(preview.warnings.value(0)));
    QCOMPARE(preview.entries.has_value(), soundDatabase);
}

void TestBackup::thePreviewWarnsOfALog()
{
    const QTemporaryDir target;
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY(result.ok);
    QVERIFY(put(result.folder + u"/brixa.db-wal"_s, "entries"));
    QVERIFY(put(result.folder + u"/brixa.db-journal"_s, QByteArray("")));
    QCOMPARE(BackupService::inspect(result.folder).warnings,
        QStringList { u"备份中的数据库带有未合并的日志，其中的内容不会被恢复：brixa.db-wal"_s });
}

void TestBackup::thePreviewWarnsOfOtherDatabases_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("warning");
    QTest::newRow("a newer one")
        << u"PRAGMA user_version = 4"_s
        << u"备份由更新版本的软件生成，恢复后部分内容可能无法显示或使用。"_s;
    QTest::newRow("one without a table")
        << u"DROP TABLE documents"_s << u"备份中的数据库无法使用：不是本软件的数据库"_s;
    QTest::newRow("an older one without a table")
        << u"DROP TABLE documents; PRAGMA user_version = 2"_s
        << u"备份中的部分数据表无法读取，备份可能不完整。"_s;
}

void TestBackup::thePreviewWarnsOfOtherDatabases()
{
    QFETCH(QString, script);
    const QTemporaryDir target;
    const BackupResult result = BackupService().backupTo(target.path());
    QVERIFY(result.ok);
    QCOMPARE(TestDatabase::runOnFile(result.folder + u"/brixa.db"_s, script), QString());
    QTEST(BackupService::inspect(result.folder).warnings.join(u'|'), "warning");
}
