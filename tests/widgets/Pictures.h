#pragma once

#include <QColor>
#include <QPixmap>
#include <QSet>

/// What can be seen on a picture.
namespace Pictures {

/// Opaque colours, by value.
QSet<QRgb> opaqueColors(const QPixmap& pixmap);

/// No pixel that anybody could see.
bool isBlank(const QPixmap& pixmap);

} // namespace Pictures
