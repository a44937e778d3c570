#include "services/backup/BackupService.h"

#include "core/AppPaths.h"
#include "db/ProfileDao.h"
#include "services/backup/BackupLayout.h"
#include "services/backup/BackupWriter.h"
#include "services/backup/DatabaseReader.h"
#include "services/backup/DiskFiles.h"
#include "services/backup/Restore.h"
#include "services/vouchers/VoucherAssets.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

constexpr qint64 longestManifest = 65'536;
constexpr qint64 newestKnownVersion = 3; // of the database

// Walks up from a folder, so that links, letter case and mounts are seen through. What cannot be
// examined may well lie inside.
bool mayBeInVoucherFolder(const QString& folder)
{
    const fs::path vouchers = DiskFiles::native(AppPaths::voucherAssetsDir());
    if (!DiskFiles::exists(vouchers))
        return false;
    std::error_code error;
    fs::path candidate = fs::canonical(DiskFiles::native(folder), error);
    for (; !error && candidate.has_relative_path(); candidate = candidate.parent_path()) {
        if (fs::equivalent(candidate, vouchers, error))
            return true;
    }
    return static_cast<bool>(error);
}

// A backup inside the folder that it copies would contain itself.
bool isUsableTarget(const QString& folder)
{
    const QFileInfo info(folder);
    return info.isDir() && info.isWritable() && !mayBeInVoucherFolder(folder);
}

// The folder that the system means by a path: taking ".." out of the text first would lead
// elsewhere behind a link. Nothing when there is none.
QString folderMeantBy(const QString& path)
{
    return path.isEmpty() ? QString() : QFileInfo(path).canonicalFilePath();
}

BackupResult failedBackup(const QString& message)
{
    qWarning("Backup failed: %s", qUtf8Printable(message));
    return { .message = message };
}

BackupManifest readManifest(const QString& folder)
{
    QFile file(BackupLayout::manifestIn(folder));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return BackupManifest::fromBytes(file.read(longestManifest));
}

// Once restored, only the backup's password opens the program, and the way back leads through it.
bool asksForOtherPassword(const DatabaseReader& backup)
{
    const std::optional<QString> hash = backup.passwordHash();
    if (!hash)
        return false;
    const CompanyProfile present = ProfileDao().load();
    return !present.passwordEnabled || present.passwordHash != *hash;
}

void readDatabase(const QString& folder, BackupPreview& preview)
{
    const DatabaseReader database(BackupLayout::databaseIn(folder));
    if (const auto problem = database.problem()) {
        preview.warnings += u"备份中的数据库无法使用：%1"_s.arg(*problem);
        return;
    }
    if (database.version() > newestKnownVersion)
        preview.warnings += u"备份由更新版本的软件生成，恢复后部分内容可能无法显示或使用。"_s;
    if (asksForOtherPassword(database))
        preview.warnings
            += u"备份的启动密码与现在的不同：恢复后要输入备份时的密码才能打开软件，忘记了请不要恢复。"_s;
    preview.companyName = database.companyName();
    preview.entries = database.rowCount(u"transactions"_s);
    preview.vouchers = database.rowCount(u"vouchers"_s);
    preview.documents = database.rowCount(u"documents"_s);
    preview.newestEntry = database.newestEntryDate();
    // A voucher may have lost its file before the backup was made.
    const int without = database
                            .vouchersThat([&](const QString& path) {
                                return !BackupLayout::holdsVoucher(folder, path);
                            })
                            .value_or(0);
    if (without > 0)
        preview.warnings
            += u"备份中有 %1 张凭证没有文件，恢复后这些凭证将无法打开。"_s.arg(without);
    if (!preview.entries || !preview.vouchers || !preview.documents)
        preview.warnings += u"备份中的部分数据表无法读取，备份可能不完整。"_s;
}

// The backup's database is taken as it lies, without what another program left in a log.
void lookForLogs(const QString& folder, BackupPreview& preview)
{
    for (const QString& suffix : { u"-wal"_s, u"-journal"_s }) {
        const QFileInfo log(BackupLayout::databaseIn(folder) + suffix);
        if (log.size() > 0)
            preview.warnings += u"备份中的数据库带有未合并的日志，其中的内容不会被恢复：%1"_s.arg(
                log.fileName());
    }
}

void compareVoucherFiles(const FolderCopy::Listing& files, BackupPreview& preview)
{
    preview.voucherFiles = files.fileCount();
    if (!files.leftOut.isEmpty())
        preview.warnings += u"备份中有 %1 个目录链接或特殊文件，其中的内容不会被恢复。"_s.arg(
            files.leftOut.size());
    if (files.problem)
        preview.warnings += u"备份中的凭证文件无法读取：%1"_s.arg(*files.problem);
    else if (!preview.manifest.voucherFiles)
        preview.warnings += u"备份清单未登记凭证文件数，无法核对凭证是否完整。"_s;
    else if (*preview.manifest.voucherFiles != preview.voucherFiles)
        preview.warnings
            += u"备份清单登记 %1 个凭证文件，实际有 %2 个，备份可能不完整或已被改动。"_s.arg(
                QString::number(*preview.manifest.voucherFiles),
                QString::number(preview.voucherFiles));
}

// Names the first of them with the file that is missing; all are in the log.
QString noteOn(const QList<Voucher>& lost)
{
    constexpr qsizetype mostNamed = 8;
    QStringList lines { u"%1 张凭证的文件已不在凭证文件夹中，备份里也没有："_s.arg(lost.size()) };
    for (const Voucher& voucher : lost) {
        qInfo("The voucher %lld has lost its file %s", voucher.id,
            qUtf8Printable(voucher.storedPath));
        if (lines.size() <= mostNamed)
            lines += u"「%1」（%2）"_s.arg(voucher.name, voucher.storedPath);
    }
    if (lost.size() > mostNamed)
        lines += u"……其余见日志"_s;
    lines += u"如有更早的备份，请从那里取回同名文件放回原处；如有原件，请重新添加凭证。"_s;
    return lines.join(u'\n');
}

// What the owner has to know about a backup that is whole as far as it could be.
QStringList notesOn(
    const FolderCopy::Listing& voucherFiles, const std::optional<QList<Voucher>>& lost)
{
    QStringList notes;
    if (!lost)
        notes += u"凭证记录无法读取，未能核对凭证文件是否齐全。"_s;
    else if (!lost->isEmpty())
        notes += noteOn(*lost);
    if (!voucherFiles.leftOut.isEmpty())
        notes += u"以下目录链接或特殊文件未包含在备份中：\n%1"_s.arg(
            voucherFiles.leftOut.join(u'\n'));
    return notes;
}

} // namespace

BackupService::BackupService(BackupProgress::Callback progress)
    : m_progress(std::move(progress))
{
}

BackupResult BackupService::backupTo(const QString& parentFolder)
{
    const QString parent = folderMeantBy(parentFolder);
    if (parent.isEmpty() || !isUsableTarget(parent))
        return failedBackup(u"备份目标目录不可用：%1"_s.arg(parentFolder));
    const QDateTime now = QDateTime::currentDateTime();
    const std::optional<QString> folder = BackupLayout::createFolder(parent, now);
    if (!folder)
        return failedBackup(u"无法创建备份目录：%1"_s.arg(BackupLayout::folderFor(parent, now)));

    const FolderCopy::Listing vouchers = FolderCopy::list(AppPaths::voucherAssetsDir());
    BackupProgress progress(m_progress, vouchers.fileCount() + 1);
    BackupWriter backup(*folder, vouchers, progress);
    if (const auto problem = backup.checkpoint())
        return failedBackup(*problem);
    if (const auto problem = backup.complete(BackupManifest::Kind::Manual, now))
        return failedBackup(*problem);
    qInfo("Backed up to %s", qUtf8Printable(*folder));
    QStringList notes;
    if (!ProfileDao().setLastBackupAt(now))
        notes += u"备份完成但备份时间未能写入档案"_s;
    const std::optional<QList<Voucher>> lost = VoucherAssets::vouchersWithoutFile();
    notes += notesOn(vouchers, lost);
    return { .ok = true,
        .folder = *folder,
        .isComplete = lost && lost->isEmpty(),
        .message = notes.join(u"\n\n"_s) };
}

BackupCheck BackupService::validateBackup(const QString& folder)
{
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        return { .message = u"目录不存在"_s };
    if (!QFileInfo(BackupLayout::manifestIn(folder)).isFile())
        return { .message = u"缺少备份清单 backup_manifest.txt，不是有效备份目录"_s };
    const QFileInfo database(BackupLayout::databaseIn(folder));
    if (!database.isFile() || database.size() == 0)
        return { .message = u"缺少数据库文件 brixa.db 或文件为空"_s };
    return { .ok = true };
}

BackupPreview BackupService::inspect(const QString& folder)
{
    BackupPreview preview;
    const BackupCheck check = validateBackup(folder);
    preview.message = check.message;
    preview.ok = check.ok;
    if (!check.ok)
        return preview;
    preview.manifest = readManifest(folder);
    const QString vouchers = BackupLayout::vouchersIn(folder);
    const FolderCopy::Listing files = FolderCopy::list(vouchers);
    preview.bytes
        = FolderCopy::sizeOf(vouchers, files) + QFileInfo(BackupLayout::databaseIn(folder)).size();
    compareVoucherFiles(files, preview);
    readDatabase(folder, preview);
    lookForLogs(folder, preview);
    return preview;
}

RestoreResult BackupService::restoreFrom(const QString& folder)
{
    if (const BackupCheck check = validateBackup(folder); !check.ok) {
        qWarning("Restore refused: %s", qUtf8Printable(check.message));
        return { .message = check.message };
    }
    // The voucher folder is moved away and then removed: a backup in it would be lost.
    if (mayBeInVoucherFolder(folder)) {
        qWarning("Restore refused: the backup lies in the live voucher folder");
        return { .message = u"备份目录位于凭证文件夹内，请先将其移到其他位置：%1"_s.arg(folder) };
    }
    return Restore(folderMeantBy(folder), m_progress).run();
}
