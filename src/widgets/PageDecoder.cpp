#include "widgets/PageDecoder.h"

#include "core/JpegHead.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMutex>
#include <QPainter>
#include <QPdfDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using PageDecoder::Page;
using PageDecoder::Problem;
using PageDecoder::Sizing;

constexpr qint64 largestPdf = qint64(64) * 1024 * 1024;
constexpr qreal dotsPerPoint = 96.0 / 72;
// In dots, more than 200 metres; enlarged it still has a whole number of pixels.
constexpr qreal longestPage = 1'000'000;

// Most JPEG files are made smaller while they are read; the others, and those that come in several
// passes, are held whole, four bytes a pixel and more.
constexpr qint64 mostPixelsOfJpeg = 150'000'000;
constexpr qint64 mostPixels = 32'000'000;

Page failed(Problem problem, const QSizeF& naturalSize = {})
{
    Page page;
    page.problem = problem;
    page.naturalSize = naturalSize;
    return page;
}

bool isAccepted(const QByteArray& format)
{
    return format == "jpeg" || format == "png" || format == "bmp";
}

bool isReadInPieces(const QString& path, const QByteArray& format)
{
    QFile file(path);
    return format == "jpeg" && file.open(QIODevice::ReadOnly) && !JpegHead::needsWholePicture(file);
}

bool isAffordable(const QString& path, const QByteArray& format, const QSize& size)
{
    const qint64 pixels = qint64(size.width()) * size.height();
    return pixels <= mostPixels || (pixels <= mostPixelsOfJpeg && isReadInPieces(path, format));
}

QImage onPaper(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return image;
    QImage paper(image.size(), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(0, 0, image);
    return paper;
}

Page pictureOf(const QString& path, const Sizing& sizing)
{
    QImageReader reader(path);
    // Screenshots are often renamed; their first bytes tell what they are.
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!isAccepted(reader.format()) || size.isEmpty())
        return failed(Problem::Damaged);
    // The size counts before the picture is turned upright.
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize upright = turned ? size.transposed() : size;
    if (!isAffordable(path, reader.format(), size))
        return failed(Problem::TooLarge, upright);
    const QSize wanted = sizing(upright, false).boundedTo(upright);
    if (wanted != upright)
        reader.setScaledSize(turned ? wanted.transposed() : wanted);
    Page page;
    page.image = onPaper(reader.read());
    page.naturalSize = upright;
    page.pageCount = 1;
    return page.image.isNull() ? failed(Problem::Damaged, upright) : page;
}

Problem problemOf(QPdfDocument::Error error)
{
    switch (error) {
    case QPdfDocument::Error::None:
        return Problem::None;
    case QPdfDocument::Error::IncorrectPassword:
    case QPdfDocument::Error::UnsupportedSecurityScheme:
        return Problem::Locked;
    default:
        return Problem::Damaged;
    }
}

Page pdfPageOf(const QString& path, int number, const Sizing& sizing)
{
    if (QFileInfo(path).size() > largestPdf)
        return failed(Problem::TooLarge);
    // The library behind the documents works on one at a time.
    static QMutex mutex;
    const QMutexLocker locker(&mutex);
    QPdfDocument document;
    if (const Problem problem = problemOf(document.load(path)); problem != Problem::None)
        return failed(problem);
    Page page;
    page.scales = true;
    page.pageCount = document.pageCount();
    if (page.pageCount < 1)
        return failed(Problem::Damaged);
    const int index = std::clamp(number, 0, page.pageCount - 1);
    page.naturalSize = document.pagePointSize(index) * dotsPerPoint;
    if (page.naturalSize.isEmpty())
        return failed(Problem::Damaged);
    if (std::max(page.naturalSize.width(), page.naturalSize.height()) > longestPage)
        return failed(Problem::TooLarge);
    // The seals of electronic invoices are annotations.
    QPdfDocumentRenderOptions options;
    options.setRenderFlags(QPdfDocumentRenderOptions::RenderFlag::Annotations);
    page.image = onPaper(document.render(index, sizing(page.naturalSize, true), options));
    return page.image.isNull() ? failed(Problem::Damaged) : page;
}

} // namespace

namespace PageDecoder {

Page decode(const QString& absolutePath, int page, const Sizing& sizing)
{
    const QFileInfo file(absolutePath);
    if (absolutePath.isEmpty() || !file.isFile())
        return failed(Problem::Missing);
    const bool pdf = file.suffix().compare(u"pdf", Qt::CaseInsensitive) == 0;
    return pdf ? pdfPageOf(absolutePath, page, sizing) : pictureOf(absolutePath, sizing);
}

} // namespace PageDecoder
