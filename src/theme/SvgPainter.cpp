#include "theme/SvgPainter.h"

#include "theme/ThemeResources.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace SvgPainter {

namespace {

QByteArray colouredDrawing(const QString& path, const QColor& color)
{
    ThemeResources::ensure();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("There is no drawing %s", qUtf8Printable(path));
        return {};
    }
    return file.readAll().replace("currentColor", color.name().toLatin1());
}

QRectF centred(QSizeF drawing, QSize canvas)
{
    const QSizeF fitted = drawing.scaled(canvas, Qt::KeepAspectRatio);
    return { QPointF(
                 (canvas.width() - fitted.width()) / 2, (canvas.height() - fitted.height()) / 2),
        fitted };
}

} // namespace

QPixmap render(const QString& path, const QColor& color, QSize deviceSize)
{
    const QString key = u"brixa:%1:%2:%3x%4"_s.arg(path, color.name(),
        QString::number(deviceSize.width()), QString::number(deviceSize.height()));
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    QSvgRenderer drawing;
    if (deviceSize.isEmpty() || !drawing.load(colouredDrawing(path, color)))
        return {};
    pixmap = QPixmap(deviceSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter, centred(drawing.defaultSize(), deviceSize));
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

} // namespace SvgPainter
