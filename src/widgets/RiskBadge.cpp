#include "widgets/RiskBadge.h"

#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct BadgeLook {
    QStringView glyph;
    Token text;
    Token ground;
};

// In the order of RiskLevel.
constexpr auto looks = std::to_array<BadgeLook>({
    { u"▲", Token::RiskHighFg, Token::RiskHighBg },
    { u"◆", Token::RiskMediumFg, Token::RiskMediumBg },
    { u"●", Token::RiskLowFg, Token::RiskLowBg },
    { u"✓", Token::RiskNormalFg, Token::RiskNormalBg },
});

constexpr int badgeHeight = 24;
constexpr int padding = 8;
constexpr int glyphSize = 10;
constexpr int gap = 5;

const BadgeLook& lookOf(RiskLevel level)
{
    return looks[static_cast<std::size_t>(level)];
}

QString labelText(RiskLevel level, bool overridden)
{
    return overridden ? labelOf(level) + u" *"_s : labelOf(level);
}

QPolygonF corners(const QRectF& box, std::initializer_list<QPointF> unitPoints)
{
    QPolygonF polygon;
    for (const QPointF& point : unitPoints)
        polygon << QPointF(box.x() + point.x() * box.width(), box.y() + point.y() * box.height());
    return polygon;
}

// Drawn rather than written: fonts disagree about the size and place of these signs.
void drawGlyph(QPainter* painter, const QRectF& box, RiskLevel level, const QColor& color)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    switch (level) {
    case RiskLevel::High:
        painter->drawPolygon(corners(box, { { 0.5, 0.05 }, { 1, 0.95 }, { 0, 0.95 } }));
        break;
    case RiskLevel::Medium:
        painter->drawPolygon(corners(box, { { 0.5, 0 }, { 1, 0.5 }, { 0.5, 1 }, { 0, 0.5 } }));
        break;
    case RiskLevel::Low:
        painter->drawEllipse(box.adjusted(1, 1, -1, -1));
        break;
    case RiskLevel::Normal:
        painter->setPen(QPen(color, 1.75, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        painter->drawPolyline(corners(box, { { 0.05, 0.55 }, { 0.38, 0.88 }, { 0.95, 0.18 } }));
        break;
    }
}

} // namespace

RiskBadge::RiskBadge(RiskLevel level, bool overridden, QWidget* parent)
    : QLabel(parent)
{
    setObjectName(u"RiskBadge"_s);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setLevel(level, overridden);
}

void RiskBadge::setLevel(RiskLevel level, bool overridden)
{
    m_level = level;
    m_overridden = overridden;
    setText(text(level, overridden));
    updateGeometry();
}

QSize RiskBadge::sizeHint() const
{
    return sizeFor(Painting::sized(font(), 12), m_level, m_overridden);
}

QString RiskBadge::text(RiskLevel level, bool overridden)
{
    return u"%1 %2"_s.arg(lookOf(level).glyph, labelText(level, overridden));
}

QSize RiskBadge::sizeFor(const QFont& font, RiskLevel level, bool overridden)
{
    const int label = QFontMetrics(font).horizontalAdvance(labelText(level, overridden));
    return { 2 * padding + glyphSize + gap + label, badgeHeight };
}

void RiskBadge::paint(QPainter* painter, const QRect& cell, RiskLevel level, bool overridden)
{
    const QSize wanted = sizeFor(painter->font(), level, overridden);
    const QRect badge(cell.left(), cell.top() + (cell.height() - badgeHeight) / 2,
        std::min(wanted.width(), cell.width()), badgeHeight);
    const QColor color = Theme::instance().color(lookOf(level).text);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setClipRect(cell, Qt::IntersectClip);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Theme::instance().color(lookOf(level).ground));
    painter->drawRoundedRect(badge, Painting::radius, Painting::radius);
    const QRectF glyph(badge.left() + padding, badge.top() + (badgeHeight - glyphSize) / 2.0,
        glyphSize, glyphSize);
    drawGlyph(painter, glyph, level, color);
    painter->setPen(color);
    painter->drawText(badge.adjusted(padding + glyphSize + gap, 0, 0, 0),
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, labelText(level, overridden));
    painter->restore();
}

void RiskBadge::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setFont(Painting::sized(font(), 12));
    paint(&painter, rect(), m_level, m_overridden);
}
