#include "services/vouchers/VoucherSource.h"

#include "services/FileRules.h"
#include "services/vouchers/Sha256.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString problemOf(const QFileInfo& info, const QString& path, const QString& extension)
{
    if (!info.isFile())
        return u"源文件不存在：%1"_s.arg(path);
    if (!FileRules::acceptedExtensions().contains(extension))
        return u"不支持的文件类型 .%1（仅支持 JPG/PNG/BMP/PDF）"_s.arg(extension);
    if (info.size() > FileRules::maxFileSize)
        return u"文件 %1 大小 %2，超过单文件 20MB 上限"_s.arg(
            info.fileName(), FileRules::formatFileSize(info.size()));
    return {};
}

// The whole file, provided that it has this size: one that changes while it is read is still being
// written by someone else.
bool readWhole(const QString& path, qint64 size, QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    content = QByteArray(size + 1, Qt::Uninitialized);
    qint64 total = 0;
    qint64 count = 0;
    do {
        count = file.read(content.data() + total, content.size() - total);
        total += count;
    } while (count > 0 && total < content.size());
    content.truncate(size);
    return total == size && count == 0;
}

} // namespace

VoucherSource VoucherSource::read(const QString& path)
{
    const QFileInfo info(path);
    VoucherSource source { .fileName = info.fileName(), .extension = info.suffix().toLower() };
    source.problem = problemOf(info, path, source.extension);
    if (!source.problem.isEmpty())
        return source;
    if (readWhole(path, info.size(), source.content))
        source.sha256 = Sha256::hexDigestOf(source.content);
    if (source.sha256.isEmpty())
        source.problem = u"文件读取失败（可能被占用）：%1"_s.arg(source.fileName);
    return source;
}
