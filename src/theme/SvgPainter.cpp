#include "theme/SvgPainter.h"

#include "theme/ThemeResources.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace SvgPainter {

namespace {

QByteArray drawingWith(const QString& path, const QColor& color, bool fine)
{
    ThemeResources::ensure();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("There is no drawing %s", qUtf8Printable(path));
        return {};
    }
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", color.name().toLatin1());
    if (fine)
        drawing.replace("stroke-width=\"1.75\"", "stroke-width=\"1.25\"");
    return drawing;
}

QRectF centred(QSizeF drawing, QSize canvas)
{
    const QSizeF fitted = drawing.scaled(canvas, Qt::KeepAspectRatio);
    return { QPointF(
                 (canvas.width() - fitted.width()) / 2, (canvas.height() - fitted.height()) / 2),
        fitted };
}

} // namespace

QPixmap render(const QString& path, const QColor& color, QSize deviceSize, bool fine)
{
    const QString key
        = u"brixa:%1:%2:%3x%4:%5"_s.arg(path, color.name(), QString::number(deviceSize.width()),
            QString::number(deviceSize.height()), fine ? u"fine"_s : u"regular"_s);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    QSvgRenderer drawing;
    if (deviceSize.isEmpty() || !drawing.load(drawingWith(path, color, fine)))
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
