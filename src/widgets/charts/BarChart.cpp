#include "widgets/charts/BarChart.h"

#include "core/Money.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 8; // leaves room for the focus ring
constexpr int legendHeight = 28;
constexpr int labelHeight = 20;
constexpr int swatch = 12;
constexpr double heightPerTick = 34;
constexpr double labelGap = 6;
constexpr double narrowestWithDots = 10;
constexpr Qt::BrushStyle outPattern = Qt::BDiagPattern;

QString yuan(qint64 fen)
{
    return Money::format(fen) + u" 元"_s;
}

void drawTexts(
    QPainter& painter, const QStringList& texts, const QList<double>& centres, double top)
{
    QList<double> widths;
    for (const QString& text : texts)
        widths += painter.fontMetrics().horizontalAdvance(text);
    for (const int i : ChartScale::fittingLabels(centres, widths, labelGap)) {
        const QRectF box(centres.at(i) - widths.at(i) / 2 - 2, top, widths.at(i) + 4, labelHeight);
        painter.drawText(box, Qt::AlignCenter | Qt::TextSingleLine, texts.at(i));
    }
}

} // namespace

BarChart::BarChart(const QString& subject, QWidget* parent)
    : ChartView(subject, Qt::Horizontal, parent)
{
    setObjectName(u"BarChart"_s);
    itemsChanged();
}

void BarChart::setItems(const QList<Item>& items)
{
    m_items = items;
    layOut();
    itemsChanged();
}

QStringList BarChart::itemLines(int item) const
{
    const auto& [title, label, group, flow] = m_items.at(item);
    return { title, u"收入 "_s + yuan(flow.inFen), u"支出 "_s + yuan(flow.outFen),
        u"净额 "_s + yuan(flow.netFen) };
}

void BarChart::layOut()
{
    qint64 lowest = 0;
    qint64 highest = 0;
    QList<ChartScale::Flow> flows;
    for (const Item& item : std::as_const(m_items)) {
        lowest = std::min({ lowest, item.flow.inFen, item.flow.outFen, item.flow.netFen });
        highest = std::max({ highest, item.flow.inFen, item.flow.outFen, item.flow.netFen });
        flows += item.flow;
    }
    const double top = margin + legendHeight;
    const double plotHeight = height() - top - 2 * labelHeight - margin;
    m_axis = ChartScale::axisFor(
        lowest, highest, std::clamp(static_cast<int>(plotHeight / heightPerTick), 3, 7));
    const QFontMetricsF metrics(Painting::sized(font(), 12));
    double labelWidth = 0;
    for (const double tick : std::as_const(m_axis.ticks))
        labelWidth = std::max(labelWidth, metrics.horizontalAdvance(m_axis.label(tick)));
    const double left = margin + labelWidth + 8;
    m_plot = QRectF(left, top, std::max(1.0, width() - left - margin), std::max(1.0, plotHeight));
    m_groups = ChartScale::groupsOf(m_plot, m_axis, flows);
}

void BarChart::resizeEvent(QResizeEvent* event)
{
    ChartView::resizeEvent(event);
    layOut();
}

int BarChart::itemAt(QPointF position) const
{
    for (int item = 0; item < m_groups.size(); ++item) {
        // The labels below belong to their group.
        if (m_groups.at(item).slot.adjusted(0, 0, 0, 2 * labelHeight).contains(position))
            return item;
    }
    return -1;
}

QRectF BarChart::itemRect(int item) const
{
    return m_groups.at(item).slot;
}

void BarChart::paintItems(QPainter& painter)
{
    if (markedItem() >= 0)
        painter.fillRect(itemRect(markedItem()), Theme::instance().color(Token::BgHover));
    paintLegend(painter);
    paintAxis(painter);
    paintBars(painter);
    paintNet(painter);
    paintLabels(painter);
}

void BarChart::paintLegend(QPainter& painter) const
{
    const Theme& theme = Theme::instance();
    const QRectF line(margin, margin - 4, width() - 2 * margin, labelHeight);
    painter.setPen(theme.color(Token::TextTertiary));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, u"单位：%1"_s.arg(m_axis.unitText));

    double right = line.right();
    for (const QString& name : { u"净额"_s, u"支出"_s, u"收入"_s }) {
        const double textWidth = painter.fontMetrics().horizontalAdvance(name);
        painter.setPen(theme.color(Token::TextSecondary));
        painter.drawText(QRectF(right - textWidth - 1, line.top(), textWidth + 2, line.height()),
            Qt::AlignCenter | Qt::TextSingleLine, name);
        const QRectF box(
            right - textWidth - swatch - 6, line.center().y() - swatch / 2.0, swatch, swatch);
        if (name == u"净额") {
            painter.setPen(QPen(theme.color(Token::ChartNet), 2));
            painter.drawLine(
                QPointF(box.left() - 4, box.center().y()), QPointF(box.right(), box.center().y()));
        } else if (name == u"支出") {
            fillSeries(painter, box, Token::ChartOut, outPattern);
        } else {
            fillSeries(painter, box, Token::ChartIn, Qt::SolidPattern);
        }
        right = box.left() - 20;
    }
}

void BarChart::paintAxis(QPainter& painter) const
{
    const Theme& theme = Theme::instance();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const double tick : m_axis.ticks) {
        const double y = m_plot.bottom() - m_axis.fraction(tick) * m_plot.height();
        painter.setPen(theme.color(tick == 0 ? Token::BorderStrong : Token::Border));
        painter.drawLine(QPointF(m_plot.left(), y), QPointF(m_plot.right(), y));
        painter.setPen(theme.color(Token::TextTertiary));
        painter.drawText(QRectF(0, y - 10, m_plot.left() - 8, 20),
            Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, m_axis.label(tick));
    }
    painter.setRenderHint(QPainter::Antialiasing);
}

void BarChart::paintBars(QPainter& painter) const
{
    for (const ChartScale::Group& group : m_groups) {
        fillSeries(painter, group.in, Token::ChartIn, Qt::SolidPattern);
        fillSeries(painter, group.out, Token::ChartOut, outPattern);
    }
}

void BarChart::paintNet(QPainter& painter) const
{
    const Theme& theme = Theme::instance();
    QPolygonF line;
    for (const ChartScale::Group& group : m_groups)
        line += group.net;
    painter.setBrush(Qt::NoBrush);
    // An outline in the card's colour keeps the line apart from the bars behind it.
    painter.setPen(QPen(theme.color(Token::BgCard), 4, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.drawPolyline(line);
    painter.setPen(
        QPen(theme.color(Token::ChartNet), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
    if (m_groups.first().slot.width() < narrowestWithDots)
        return;
    painter.setBrush(theme.color(Token::BgCard));
    for (const QPointF& point : std::as_const(line))
        painter.drawEllipse(point, 3, 3);
}

void BarChart::paintLabels(QPainter& painter) const
{
    QStringList labels;
    QStringList groups;
    QList<double> centres;
    QList<double> groupCentres;
    for (int item = 0; item < itemCount(); ++item) {
        const double centre = m_groups.at(item).slot.center().x();
        labels += m_items.at(item).label;
        centres += centre;
        const QString& group = m_items.at(item).group;
        if (!group.isEmpty() && (item == 0 || group != m_items.at(item - 1).group)) {
            groups += group;
            // The first one must not stand out at the left.
            groupCentres
                += std::max(centre, painter.fontMetrics().horizontalAdvance(group) / 2.0 + margin);
        }
    }
    painter.setPen(Theme::instance().color(Token::TextSecondary));
    drawTexts(painter, labels, centres, m_plot.bottom() + 2);
    painter.setPen(Theme::instance().color(Token::TextTertiary));
    drawTexts(painter, groups, groupCentres, m_plot.bottom() + labelHeight);
}
