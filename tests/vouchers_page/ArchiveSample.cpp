#include "vouchers_page/ArchiveSample.h"

#include "core/AppPaths.h"
#include "services/vouchers/VoucherService.h"
#include "support/TestFile.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

QByteArray picture(int width, int height, const char* format)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    return image.save(&buffer, format) ? buffer.data() : QByteArray();
}

} // namespace

namespace ArchiveSample {

QString source(const QString& name, const QByteArray& bytes)
{
    const QString path = AppPaths::dataDir() + u'/' + name;
    return TestFile::put(path, bytes) ? path : QString();
}

qint64 add(const QString& name, int day, qint64 projectId, const QList<qint64>& entries,
    const QByteArray& content, const QString& extension)
{
    VoucherImportRequest request;
    request.sourcePath = source(
        u"source."_s + extension, content.isEmpty() ? picture(40, 20 + day, "PNG") : content);
    request.name = name;
    request.voucherType = VoucherType::Invoice;
    request.voucherDate = QDate(2026, 1, day);
    return VoucherService::importVoucher(request, projectId, entries).voucherId;
}

QByteArray jpeg(int width, int height)
{
    return picture(width, height, "JPG");
}

QByteArray turnedJpeg()
{
    const QByteArray bytes = jpeg(400, 200);
    const QByteArray exif = QByteArray::fromHex(
        "ffe1002245786966000049492a0008000000010012010300010000000600000000000000");
    return bytes.first(2) + exif + bytes.sliced(2);
}

QByteArray hugeJpeg()
{
    QByteArray bytes = jpeg(8, 8);
    const qsizetype frame = bytes.indexOf("\xff\xc0");
    qToBigEndian<quint16>(30000, bytes.data() + frame + 5);
    qToBigEndian<quint16>(30000, bytes.data() + frame + 7);
    return bytes;
}

QByteArray pdf(int pages)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4));
    QPainter painter(&writer);
    for (int page = 0; page < pages; ++page) {
        if (page > 0)
            writer.newPage();
        painter.fillRect(0, 0, 100000, 100000, Qt::blue);
    }
    painter.end();
    return buffer.data();
}

} // namespace ArchiveSample
