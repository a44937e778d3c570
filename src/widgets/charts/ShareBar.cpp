#include "widgets/charts/ShareBar.h"

#include "theme/Theme.h"
#include "widgets/charts/ChartScale.h"
#include "widgets/Painting.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 8;
constexpr int barHeight = 32;
constexpr int legendTop = margin + barHeight + 12;
constexpr int legendHeight = 44;
constexpr int swatch = 12;
constexpr double leastPart = 6;

} // namespace

ShareBar::ShareBar(const QString& subject, QWidget* parent)
    : ChartView(subject, Qt::Horizontal, parent)
{
    setObjectName(u"ShareBar"_s);
    itemsChanged();
}

void ShareBar::setItems(const QList<Item>& items)
{
    m_items = items;
    itemsChanged();
}

QStringList ShareBar::itemLines(int item) const
{
    return { m_items.at(item).label, m_items.at(item).valueText };
}

QList<QRectF> ShareBar::parts() const
{
    QList<qint64> values;
    for (const Item& item : m_items)
        values += item.value;
    QList<QRectF> parts;
    double left = margin;
    for (const double width :
        ChartScale::shareWidths(values, this->width() - 2 * margin, leastPart)) {
        parts += { left, margin, width, barHeight };
        left += width;
    }
    return parts;
}

QRectF ShareBar::legendRect(int item) const
{
    const double cell = (width() - 2.0 * margin) / std::max(1, itemCount());
    return { margin + item * cell, legendTop, cell, legendHeight };
}

int ShareBar::itemAt(QPointF position) const
{
    const QList<QRectF> shown = parts();
    for (int item = 0; item < itemCount(); ++item) {
        if (shown.at(item).contains(position) || legendRect(item).contains(position))
            return item;
    }
    return -1;
}

QRectF ShareBar::itemRect(int item) const
{
    const QRectF part = parts().at(item);
    return part.width() > 0 ? part : legendRect(item);
}

void ShareBar::paintItems(QPainter& painter)
{
    const Theme& theme = Theme::instance();
    const QList<QRectF> shown = parts();
    for (int i = 0; i < itemCount(); ++i) {
        const Item& item = m_items.at(i);
        // A gap keeps neighbours apart whatever their colours.
        if (shown.at(i).width() > 0)
            fillSeries(painter, shown.at(i).adjusted(1, 0, -1, 0), item.colour, item.pattern);
        const QRectF cell = legendRect(i);
        if (i == markedItem())
            painter.fillRect(cell, theme.color(Token::BgHover));
        const QRectF box(cell.left() + 4, cell.top() + 5, swatch, swatch);
        fillSeries(painter, box, item.colour, item.pattern);
        const QRectF line(box.right() + 6, cell.top(), cell.right() - box.right() - 8, 22);
        const auto draw = [&](const QRectF& where, Token ink, const QString& text) {
            painter.setPen(theme.color(ink));
            painter.drawText(where, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                painter.fontMetrics().elidedText(
                    text, Qt::ElideRight, static_cast<int>(where.width())));
        };
        draw(line, Token::TextPrimary, item.label);
        draw(line.translated(0, 20), Token::TextSecondary, item.valueText);
    }
}
