#include "theme/Logo.h"

#include "theme/SvgPainter.h"

#include <QSizeF>

#include <array>

using namespace Qt::StringLiterals;

namespace Logo {

namespace {

constexpr auto iconSizes = std::to_array<int>({ 16, 24, 32, 48, 64, 128, 256 });

// The full drawing blurs below this width; the small one is laid out on whole pixels.
constexpr int smallestFullDrawing = 24;

} // namespace

QPixmap pixmap(int size, qreal dpr)
{
    const QSize deviceSize = QSizeF(size * dpr, size * dpr).toSize();
    const QString path = deviceSize.width() < smallestFullDrawing ? u":/brixa/logo/logo-small.svg"_s
                                                                  : u":/brixa/logo/logo.svg"_s;
    QPixmap result = SvgPainter::render(path, Qt::black, deviceSize);
    result.setDevicePixelRatio(dpr);
    return result;
}

QIcon icon()
{
    QIcon result;
    for (const int size : iconSizes)
        result.addPixmap(pixmap(size));
    return result;
}

} // namespace Logo
