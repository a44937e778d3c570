#include "widgets/charts/HBarChart.h"

#include "theme/Theme.h"
#include "widgets/charts/ChartScale.h"
#include "widgets/Painting.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 8;
constexpr int rowHeight = 34;
constexpr int barHeight = 16;
constexpr int gap = 12;
constexpr int leastHeight = 96; // room for the figures' box
constexpr double mostForLabels = 0.4; // of the width

template <typename TextOf>
double widestText(const QFont& font, const QList<HBarChart::Item>& items, TextOf textOf)
{
    const QFontMetricsF metrics(Painting::sized(font, 12));
    double width = 0;
    for (const HBarChart::Item& item : items)
        width = std::max(width, metrics.horizontalAdvance(textOf(item)));
    return width + 2;
}

} // namespace

HBarChart::HBarChart(const QString& subject, QWidget* parent)
    : ChartView(subject, Qt::Vertical, parent)
{
    setObjectName(u"HBarChart"_s);
    itemsChanged();
}

void HBarChart::setItems(const QList<Item>& items)
{
    m_items = items;
    itemsChanged();
}

QStringList HBarChart::itemLines(int item) const
{
    return QStringList { m_items.at(item).label } + m_items.at(item).figures;
}

QSize HBarChart::sizeHint() const
{
    return { 480, std::max(leastHeight, itemCount() * rowHeight + 2 * margin) };
}

QRectF HBarChart::plot() const
{
    const double labels
        = std::min(widestText(font(), m_items, [](const Item& item) { return item.label; }),
            width() * mostForLabels);
    const double values
        = widestText(font(), m_items, [](const Item& item) { return item.valueText; });
    const double left = margin + labels + gap;
    return { left, margin, std::max(1.0, width() - left - values - gap - margin),
        static_cast<double>(itemCount() * rowHeight) };
}

QRectF HBarChart::rowRect(int item) const
{
    return { margin, margin + static_cast<double>(item * rowHeight), width() - 2.0 * margin,
        rowHeight };
}

QList<QRectF> HBarChart::bars() const
{
    QList<qint64> values;
    for (const Item& item : m_items)
        values += item.value;
    return ChartScale::rowBars(plot(), values, barHeight);
}

int HBarChart::itemAt(QPointF position) const
{
    for (int item = 0; item < itemCount(); ++item) {
        if (rowRect(item).contains(position))
            return item;
    }
    return -1;
}

QRectF HBarChart::itemRect(int item) const
{
    return bars().at(item);
}

void HBarChart::paintItems(QPainter& painter)
{
    const Theme& theme = Theme::instance();
    const QRectF area = plot();
    const QList<QRectF> shown = bars();
    for (int i = 0; i < itemCount(); ++i) {
        const Item& item = m_items.at(i);
        const QRectF row = rowRect(i);
        if (i == markedItem())
            painter.fillRect(row, theme.color(Token::BgHover));
        painter.setPen(theme.color(Token::TextPrimary));
        const QRectF label(row.left(), row.top(), area.left() - gap - row.left(), row.height());
        painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
            painter.fontMetrics().elidedText(
                item.label, Qt::ElideRight, static_cast<int>(label.width())));
        fillSeries(painter, shown.at(i), item.colour, Qt::SolidPattern);
        painter.setPen(theme.color(Token::TextSecondary));
        painter.drawText(
            QRectF(shown.at(i).right() + gap / 2.0, row.top(), row.right(), row.height()),
            Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, item.valueText);
    }
    painter.setPen(theme.color(Token::BorderStrong));
    painter.drawLine(area.topLeft(), area.bottomLeft());
}
