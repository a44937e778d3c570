#include "core/AppPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace AppPaths {

namespace {

bool ensureDir(const QString& path)
{
    const QDir dir(path);
    return dir.exists() || dir.mkpath(u"."_s);
}

bool isSeparator(QChar c)
{
    return c == u'/' || c == u'\\';
}

// "/data2/a.pdf" starts with "/data" and still lies outside it.
bool isInside(const QString& path, const QString& directory)
{
    if (!path.startsWith(directory, Qt::CaseInsensitive))
        return false;
    return path.size() == directory.size() || isSeparator(path.at(directory.size()));
}

} // namespace

QString dataDir()
{
    return QCoreApplication::applicationDirPath() + u"/data"_s;
}

QString databasePath()
{
    return dataDir() + u"/brixa.db"_s;
}

QString voucherAssetsDir()
{
    return dataDir() + u"/voucher_assets"_s;
}

QString exportsDir()
{
    return dataDir() + u"/exports"_s;
}

QString backupsDir()
{
    return dataDir() + u"/backups"_s;
}

QString autoBackupBeforeRestoreDir()
{
    return dataDir() + u"/auto_backup_before_restore"_s;
}

QString logsDir()
{
    return dataDir() + u"/logs"_s;
}

QString instanceLockPath()
{
    return dataDir() + u"/brixa.lock"_s;
}

bool ensureDirs()
{
    bool allExist = true;
    for (const QString& path : { dataDir(), voucherAssetsDir(), exportsDir(), backupsDir(),
             autoBackupBeforeRestoreDir(), logsDir() })
        allExist = ensureDir(path) && allExist;
    return allExist;
}

QString toAbsolute(const QString& storedPath)
{
    if (storedPath.isEmpty())
        return storedPath;
    const QString path = QDir::fromNativeSeparators(storedPath);
    const QFileInfo info(path);
    const QString absolute = info.isRelative() ? dataDir() + u'/' + path : info.absoluteFilePath();
    return QDir::toNativeSeparators(absolute);
}

QString toStored(const QString& anyPath)
{
    const QString directory = QDir::toNativeSeparators(QDir(dataDir()).absolutePath());
    QString path = QDir::toNativeSeparators(QFileInfo(anyPath).absoluteFilePath());
    if (isInside(path, directory)) {
        path.remove(0, directory.size());
        if (!path.isEmpty())
            path.remove(0, 1);
    }
    return QDir::fromNativeSeparators(path);
}

} // namespace AppPaths
