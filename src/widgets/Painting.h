#pragma once

#include "theme/ThemeTokens.h"

#include <QFont>
#include <QRectF>

class QPainter;

/// What the widgets that paint themselves share.
namespace Painting {

inline constexpr qreal radius = 6;

/// The widget's own font in another size and weight.
QFont sized(QFont font, int pixelSize, bool bold = false);

/// A rounded surface with a one-pixel outline that lies fully inside `rect`.
void drawSurface(QPainter& painter, const QRectF& rect, Token fill, Token outline);

/// The ring of the control that has the keyboard, two pixels wide, fully inside `rect`.
void drawFocusRing(QPainter& painter, const QRectF& rect, qreal cornerRadius = radius);

} // namespace Painting
