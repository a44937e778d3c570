#include "services/backup/BackupWriter.h"

#include "core/AppPaths.h"
#include "core/SafeFile.h"
#include "core/TextRules.h"
#include "db/Connection.h"
#include "db/DatabaseManager.h"
#include "db/SqlErrorText.h"
#include "services/backup/BackupLayout.h"
#include "services/backup/BackupProgress.h"
#include "services/backup/DiskFiles.h"

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> notDurable(const QString& path, const std::error_code& error)
{
    qWarning("Cannot make %s durable: %s", qUtf8Printable(path), error.message().c_str());
    return u"复制失败：%1"_s.arg(path);
}

} // namespace

BackupWriter::BackupWriter(
    QString folder, const FolderCopy::Listing& vouchers, BackupProgress& progress)
    : m_folder(std::move(folder))
    , m_vouchers(vouchers)
    , m_progress(progress)
{
}

BackupWriter::~BackupWriter()
{
    if (!m_complete && FolderCopy::remove(m_folder))
        qWarning("An unfinished backup stays behind: %s", qUtf8Printable(m_folder));
}

std::optional<QString> BackupWriter::checkpoint()
{
    DatabaseManager& database = DatabaseManager::instance();
    if (!database.checkpoint())
        return u"WAL 检查点失败：%1"_s.arg(database.lastError());
    return {};
}

std::optional<QString> BackupWriter::complete(BackupManifest::Kind kind, const QDateTime& time)
{
    if (const auto problem = copyDatabase())
        return problem;
    if (const auto problem = copyVouchers())
        return problem;
    // A manifest says that everything else is there, even after a power failure.
    const std::filesystem::path folder = DiskFiles::native(m_folder);
    if (const std::error_code error = DiskFiles::syncTree(folder))
        return notDurable(m_folder, error);
    if (const auto problem = writeManifest(kind, time))
        return problem;
    for (const std::filesystem::path& names : { folder, folder.parent_path() }) {
        if (const std::error_code error = DiskFiles::syncFolder(names))
            return notDurable(m_folder, error);
    }
    m_complete = true;
    return {};
}

std::optional<QString> BackupWriter::copyDatabase()
{
    QString quoted = BackupLayout::databaseIn(m_folder);
    quoted.replace(u'\'', u"''"_s);
    QSqlQuery query(Connection::current());
    if (!query.exec(u"VACUUM INTO '%1'"_s.arg(quoted)))
        return u"数据库副本生成失败：%1"_s.arg(sqlErrorText(query.lastError()));
    m_progress.step();
    return {};
}

std::optional<QString> BackupWriter::copyVouchers()
{
    return FolderCopy::copy(AppPaths::voucherAssetsDir(), m_vouchers,
        BackupLayout::vouchersIn(m_folder), [this] { m_progress.step(); });
}

std::optional<QString> BackupWriter::writeManifest(BackupManifest::Kind kind, const QDateTime& time)
{
    const BackupManifest manifest { .version = QCoreApplication::applicationVersion(),
        .kind = BackupManifest::labelOf(kind),
        .time = TextRules::timestampText(time),
        .voucherFiles = m_vouchers.fileCount() };
    const QString path = BackupLayout::manifestIn(m_folder);
    QString error;
    if (SafeFile::write(path, manifest.toBytes(), &error))
        return {};
    qWarning("Cannot write %s: %s", qUtf8Printable(path), qUtf8Printable(error));
    return u"复制失败：%1"_s.arg(path);
}
