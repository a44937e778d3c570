#include "services/backup/Restore.h"

#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "services/backup/BackupLayout.h"
#include "services/backup/BackupWriter.h"
#include "services/backup/DatabaseReader.h"
#include "services/backup/DiskFiles.h"
#include "services/backup/RestoreSwap.h"

#include <QDir>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

QString cannotBeOpened(const QString& reason)
{
    return u"恢复后数据库无法打开：%1"_s.arg(reason);
}

} // namespace

Restore::Restore(const QString& folder, const BackupProgress::Callback& callback)
    : m_folder(folder)
    , m_present(FolderCopy::list(AppPaths::voucherAssetsDir()))
    , m_backup(FolderCopy::list(BackupLayout::vouchersIn(folder)))
    , m_progress(callback, m_present.fileCount() + m_backup.fileCount() + 2)
{
}

RestoreResult Restore::run()
{
    for (const auto step : { &Restore::backUpPresent, &Restore::stage, &Restore::replace }) {
        if (const Problem problem = (this->*step)()) {
            qWarning("Restore failed: %s", qUtf8Printable(*problem));
            m_result.message = *problem;
            return m_result;
        }
    }
    qInfo("Restored %s; the replaced data lie in %s", qUtf8Printable(m_folder),
        qUtf8Printable(m_result.autoBackupFolder));
    m_result.ok = true;
    return m_result;
}

Restore::Problem Restore::backUpPresent()
{
    if (auto problem = RestoreSwap::clearEarlier())
        return problem;
    const QString parent = AppPaths::autoBackupBeforeRestoreDir();
    const QDateTime now = QDateTime::currentDateTime();
    const bool parentExists = QDir().mkpath(parent);
    const auto folder = parentExists ? BackupLayout::createFolder(parent, now) : std::nullopt;
    if (!folder)
        return u"无法创建自动备份目录：%1"_s.arg(parent);
    BackupWriter backup(*folder, m_present, m_progress);
    if (auto problem = backup.checkpoint())
        return problem;
    if (const auto problem = backup.complete(BackupManifest::Kind::BeforeRestore, now)) {
        qWarning("Automatic backup failed: %s", qUtf8Printable(*problem));
        return u"当前数据库自动备份失败"_s;
    }
    m_result.autoBackupFolder = *folder;
    return {};
}

// Whatever is wrong with the backup itself shows here, while the live data are untouched.
Restore::Problem Restore::stage()
{
    if (auto problem = RestoreSwap::begin())
        return problem;
    auto removeStaged = qScopeGuard(RestoreSwap::abandon);
    if (auto problem = copyToStage())
        return problem;
    if (const auto problem = DatabaseReader(RestoreSwap::stagedDatabase()).problem())
        return cannotBeOpened(*problem);
    removeStaged.dismiss();
    return {};
}

Restore::Problem Restore::copyToStage()
{
    const auto source = DiskFiles::native(BackupLayout::databaseIn(m_folder));
    const auto target = DiskFiles::native(RestoreSwap::stagedDatabase());
    if (const std::error_code error = DiskFiles::copyFile(source, target)) {
        qWarning("Copying the backup's database: %s", error.message().c_str());
        return u"数据库文件复制失败：%1"_s.arg(AppPaths::databasePath());
    }
    m_progress.step();
    return FolderCopy::copy(BackupLayout::vouchersIn(m_folder), m_backup,
        RestoreSwap::stagedVouchers(), [this] { m_progress.step(); });
}

Restore::Problem Restore::replace()
{
    DatabaseManager::instance().close();
    Problem problem = RestoreSwap::swapIn();
    if (!problem)
        problem = openRestored();
    if (!problem)
        problem = RestoreSwap::commit();
    if (!problem)
        return {};
    if (const Problem notBack = returnToPresent())
        return *problem + u'\n' + *notBack;
    return problem;
}

Restore::Problem Restore::openRestored()
{
    DatabaseManager& database = DatabaseManager::instance();
    if (!database.open())
        return cannotBeOpened(database.lastError());
    // The next start reads the profile before anything else and ends where it cannot.
    if (!ProfileDao().find())
        return cannotBeOpened(u"公司档案无法读取"_s);
    return {};
}

Restore::Problem Restore::returnToPresent()
{
    DatabaseManager& database = DatabaseManager::instance();
    database.close();
    Problem problem = RestoreSwap::takeBack();
    RestoreSwap::abandon();
    // Opening between the two would work on a mixture, or make an empty database.
    m_result.databaseOpen = !problem && database.open();
    if (!m_result.databaseOpen)
        qCritical("The data from before the restore cannot be opened: %s",
            qUtf8Printable(problem.value_or(database.lastError())));
    return problem;
}
