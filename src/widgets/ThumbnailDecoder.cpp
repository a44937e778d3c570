#include "widgets/ThumbnailDecoder.h"

#include <QFileInfo>
#include <QImageReader>
#include <QMutex>
#include <QPainter>
#include <QPdfDocument>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPdf = 64 * 1024 * 1024;

// A JPEG file is made smaller while it is read; the others are held whole, four bytes a pixel.
constexpr qint64 mostPixelsOfJpeg = 150'000'000;
constexpr qint64 mostPixels = 32'000'000;

QSize fitted(const QSizeF& size, QSize box)
{
    const QSizeF scaled = size.scaled(box, Qt::KeepAspectRatio);
    return scaled.toSize().expandedTo({ 1, 1 }).boundedTo(box.expandedTo({ 1, 1 }));
}

bool isAffordable(const QByteArray& format, const QSize& size)
{
    if (format != "jpeg" && format != "png" && format != "bmp")
        return false;
    const qint64 pixels = qint64(size.width()) * size.height();
    return pixels > 0 && pixels <= (format == "jpeg" ? mostPixelsOfJpeg : mostPixels);
}

QImage decodePicture(const QString& path, QSize box)
{
    QImageReader reader(path);
    // Screenshots are often renamed; their first bytes tell what they are.
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!isAffordable(reader.format(), size))
        return {};
    // The size counts before the picture is turned upright.
    if (reader.transformation() & QImageIOHandler::TransformationRotate90)
        box.transpose();
    if (size.width() > box.width() || size.height() > box.height())
        reader.setScaledSize(fitted(size, box));
    return reader.read();
}

QImage decodePage(const QString& path, QSize box)
{
    if (QFileInfo(path).size() > largestPdf)
        return {};
    // The library behind the documents works on one at a time.
    static QMutex mutex;
    const QMutexLocker locker(&mutex);
    QPdfDocument document;
    if (document.load(path) != QPdfDocument::Error::None || document.pageCount() < 1)
        return {};
    const QSizeF points = document.pagePointSize(0);
    if (points.isEmpty())
        return {};
    const QImage page = document.render(0, fitted(points, box));
    if (page.isNull())
        return {};
    QImage paper(page.size(), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(0, 0, page);
    return paper;
}

} // namespace

namespace ThumbnailDecoder {

QImage decode(const QString& absolutePath, QSize box)
{
    const bool pdf = QFileInfo(absolutePath).suffix().compare(u"pdf", Qt::CaseInsensitive) == 0;
    return pdf ? decodePage(absolutePath, box) : decodePicture(absolutePath, box);
}

} // namespace ThumbnailDecoder
