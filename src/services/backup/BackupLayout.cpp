#include "services/backup/BackupLayout.h"

#include "core/AppPaths.h"
#include "services/backup/DiskFiles.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace BackupLayout {

namespace {

constexpr int firstNumberGivenUp = 1000;

} // namespace

QString databaseName()
{
    return QFileInfo(AppPaths::databasePath()).fileName();
}

QString voucherFolderName()
{
    return QFileInfo(AppPaths::voucherAssetsDir()).fileName();
}

QString databaseIn(const QString& folder)
{
    return folder + u'/' + databaseName();
}

QString vouchersIn(const QString& folder)
{
    return folder + u'/' + voucherFolderName();
}

QString manifestIn(const QString& folder)
{
    return folder + u"/backup_manifest.txt"_s;
}

bool holdsVoucher(const QString& folder, const QString& storedPath)
{
    const QString path = QDir::cleanPath(QDir::fromNativeSeparators(storedPath));
    return path.startsWith(voucherFolderName() + u'/') && QFileInfo(folder + u'/' + path).isFile();
}

QString folderFor(const QString& parent, const QDateTime& time)
{
    return parent + u"/brixa_backup_"_s + time.toString(u"yyyyMMdd_HHmmss");
}

std::optional<QString> createFolder(const QString& parent, const QDateTime& time)
{
    const QString base = folderFor(parent, time);
    QString folder = base;
    for (int number = 2; DiskFiles::exists(DiskFiles::native(folder)); ++number) {
        if (number == firstNumberGivenUp)
            return {};
        folder = base + u'_' + QString::number(number);
    }
    std::error_code error;
    // Not created means that somebody else has just taken the name: their folder stays theirs.
    if (!std::filesystem::create_directory(DiskFiles::native(folder), error))
        return {};
    return folder;
}

} // namespace BackupLayout
