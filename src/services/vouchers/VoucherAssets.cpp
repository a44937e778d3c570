#include "services/vouchers/VoucherAssets.h"

#include "core/AppPaths.h"
#include "core/SafeFile.h"
#include "db/VoucherDao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

bool isBelow(const QString& path, const QString& folder)
{
    return path.startsWith(folder + u'/');
}

// A link inside the folder may lead out of it. What does not exist leads nowhere.
bool staysInside(const QString& path)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty()
        || isBelow(target, QFileInfo(AppPaths::voucherAssetsDir()).canonicalFilePath());
}

// Where letter case matters, taking two files for one only keeps a file from being reported.
QString comparable(const QString& path)
{
    return QDir::cleanPath(path).toCaseFolded();
}

} // namespace

namespace VoucherAssets {

QString locate(const QString& storedPath)
{
    const QString path
        = QDir::cleanPath(QDir::fromNativeSeparators(AppPaths::toAbsolute(storedPath)));
    if (isBelow(path, QDir::cleanPath(AppPaths::voucherAssetsDir())) && staysInside(path))
        return path;
    qWarning(
        "The voucher file %s lies outside of the archive's folder", qUtf8Printable(storedPath));
    return {};
}

QString existingFile(const QString& storedPath)
{
    const QString path = locate(storedPath);
    return QFileInfo(path).isFile() ? path : QString();
}

void remove(const QString& storedPath)
{
    const QString path = locate(storedPath);
    if (path.isEmpty() || !QFileInfo::exists(path))
        return;
    QFile file(path);
    if (!file.remove())
        qWarning("The voucher file %s could not be removed: %s", qUtf8Printable(storedPath),
            qUtf8Printable(file.errorString()));
}

QStringList filesWithoutRow()
{
    VoucherDao vouchers;
    QSet<QString> named;
    for (const Voucher& voucher : vouchers.search({}))
        named += comparable(locate(voucher.storedPath));
    if (!vouchers.lastError().isEmpty())
        return {};
    QStringList free;
    const QDir folder(AppPaths::voucherAssetsDir());
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
        if (!named.contains(comparable(folder.filePath(name))))
            free += AppPaths::toStored(folder.filePath(name));
    }
    return free;
}

std::optional<QList<Voucher>> vouchersWithoutFile()
{
    VoucherDao vouchers;
    QList<Voucher> found = vouchers.search({});
    if (!vouchers.lastError().isEmpty())
        return {};
    found.removeIf(
        [](const Voucher& voucher) { return !existingFile(voucher.storedPath).isEmpty(); });
    return found;
}

} // namespace VoucherAssets

VoucherCopy::VoucherCopy(const QByteArray& content, const QString& extension)
    : m_storedPath(u"voucher_assets/%1.%2"_s.arg(
        QUuid::createUuid().toString(QUuid::WithoutBraces), extension))
{
    // Someone may have tidied the folder away since the start; if it cannot be made, writing fails.
    QDir().mkpath(AppPaths::voucherAssetsDir());
    QString reason;
    const QString path = AppPaths::dataDir() + u'/' + m_storedPath;
    m_written = SafeFile::write(path, content, &reason);
    if (m_written)
        SafeFile::makeNameDurable(path);
    else
        qWarning("The voucher file %s could not be written: %s", qUtf8Printable(m_storedPath),
            qUtf8Printable(reason));
}

VoucherCopy::~VoucherCopy()
{
    if (m_written && !m_kept)
        VoucherAssets::remove(m_storedPath);
}
