#include "widgets/Pictures.h"

namespace Pictures {

namespace {

template <typename Visit> void forEachPixel(const QPixmap& pixmap, Visit visit)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            visit(image.pixel(x, y));
    }
}

} // namespace

QSet<QRgb> opaqueColors(const QPixmap& pixmap)
{
    QSet<QRgb> colors;
    forEachPixel(pixmap, [&colors](QRgb pixel) {
        if (qAlpha(pixel) == 255)
            colors.insert(pixel);
    });
    return colors;
}

bool isBlank(const QPixmap& pixmap)
{
    bool blank = true;
    forEachPixel(pixmap, [&blank](QRgb pixel) { blank = blank && qAlpha(pixel) < 64; });
    return blank;
}

} // namespace Pictures
