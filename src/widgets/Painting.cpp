#include "widgets/Painting.h"

#include "theme/Theme.h"

#include <QPainter>

namespace Painting {

QFont sized(QFont font, int pixelSize, bool bold)
{
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

void drawSurface(QPainter& painter, const QRectF& rect, Token fill, Token outline)
{
    painter.setPen(QPen(Theme::instance().color(outline), 1));
    painter.setBrush(Theme::instance().color(fill));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

void drawFocusRing(QPainter& painter, const QRectF& rect, qreal cornerRadius)
{
    painter.setPen(QPen(Theme::instance().color(Token::FocusRing), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(1, 1, -1, -1), cornerRadius, cornerRadius);
}

} // namespace Painting
