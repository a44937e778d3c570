#include "services/backup/BackupManifest.h"

#include "services/backup/BackupLayout.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

const QString& versionLine()
{
    static const QString line = u"版本：V%1"_s;
    return line;
}

const QString& kindLine()
{
    static const QString line = u"备份类型：%1"_s;
    return line;
}

const QString& timeLine()
{
    static const QString line = u"备份时间：%1"_s;
    return line;
}

const QString& vouchersLine()
{
    static const QString line = u"凭证文件数：%1"_s;
    return line;
}

// The value in a line made from the pattern; null when the line is another one.
QString valueIn(const QString& line, const QString& pattern)
{
    const QString label = pattern.chopped(2);
    return line.startsWith(label) ? line.sliced(label.size()).trimmed() : QString();
}

} // namespace

QString BackupManifest::labelOf(Kind kind)
{
    return kind == Kind::Manual ? u"手动备份"_s : u"恢复前自动备份"_s;
}

QByteArray BackupManifest::toBytes() const
{
    const QStringList lines { u"Brixa 备份清单（backup_manifest）"_s, u"产品：Brixa"_s,
        versionLine().arg(version), kindLine().arg(kind), timeLine().arg(time),
        u"数据库文件：%1"_s.arg(BackupLayout::databaseName()),
        vouchersLine().arg(voucherFiles.value_or(0)),
        u"说明：本软件全程离线运行，本目录为本地数据完整副本。"_s };
    return (lines.join(u'\n') + u'\n').toUtf8();
}

BackupManifest BackupManifest::fromBytes(const QByteArray& bytes)
{
    BackupManifest manifest;
    const QStringList lines = QString::fromUtf8(bytes).split(u'\n');
    for (const QString& line : lines) {
        if (const QString version = valueIn(line, versionLine()); !version.isNull())
            manifest.version = version;
        else if (const QString kind = valueIn(line, kindLine()); !kind.isNull())
            manifest.kind = kind;
        else if (const QString time = valueIn(line, timeLine()); !time.isNull())
            manifest.time = time;
        else if (const QString count = valueIn(line, vouchersLine()); !count.isNull()) {
            bool isNumber = false;
            const int files = count.toInt(&isNumber);
            if (isNumber && files >= 0)
                manifest.voucherFiles = files;
        }
    }
    return manifest;
}
