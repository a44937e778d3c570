#include "widgets/charts/ChartScale.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace ChartScale {

namespace {

constexpr double fenPerTenThousandYuan = 1e6;
constexpr double fenPerHundredMillionYuan = 1e10;
constexpr double barShare = 0.7; // of a group's slot; the rest is the gap to its neighbours
constexpr double widestBar = 24;
constexpr int mostDecimals = 4;

// The next step of 1, 2, 5, 10, … that is not below `least`.
double niceStep(double least)
{
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : { 1.0, 2.0, 5.0 }) {
        if (factor * power >= least * (1 - 1e-9))
            return factor * power;
    }
    return 10 * power;
}

QList<double> ticksAt(double step, double low, double high)
{
    const auto first = std::llround(std::floor(low / step));
    const auto last = std::llround(std::ceil(high / step));
    QList<double> ticks;
    for (auto i = first; i <= last; ++i)
        ticks += static_cast<double>(i) * step;
    return ticks;
}

void chooseUnit(Axis& axis, double largest, double step)
{
    axis.unitText = u"元"_s;
    if (largest >= fenPerHundredMillionYuan) {
        axis.unitFen = fenPerHundredMillionYuan;
        axis.unitText = u"亿元"_s;
    } else if (largest >= fenPerTenThousandYuan) {
        axis.unitFen = fenPerTenThousandYuan;
        axis.unitText = u"万元"_s;
    }
    double shown = step / axis.unitFen;
    while (axis.decimals < mostDecimals && std::abs(shown - std::round(shown)) > 1e-6) {
        shown *= 10;
        ++axis.decimals;
    }
}

QRectF barBetween(double left, double width, double valueY, double zeroY, bool isZero)
{
    const double height = isZero ? 0 : std::max(1.0, std::abs(zeroY - valueY));
    return { left, valueY <= zeroY ? zeroY - height : zeroY, width, height };
}

double total(const QList<qint64>& values)
{
    double sum = 0;
    for (const qint64 value : values)
        sum += static_cast<double>(std::max<qint64>(0, value));
    return sum;
}

bool fits(const QList<double>& centres, const QList<double>& widths, double gap, qsizetype stride)
{
    for (qsizetype i = centres.size() - 1; i - stride >= 0; i -= stride) {
        const double room = centres.at(i) - centres.at(i - stride);
        if (room < (widths.at(i) + widths.at(i - stride)) / 2 + gap)
            return false;
    }
    return true;
}

} // namespace

double Axis::fraction(double fen) const
{
    if (ticks.size() < 2)
        return 0;
    return (fen - ticks.first()) / (ticks.last() - ticks.first());
}

QString Axis::label(double fen) const
{
    return QLocale(QLocale::Chinese, QLocale::China).toString(fen / unitFen, 'f', decimals);
}

Axis axisFor(qint64 lowestFen, qint64 highestFen, int mostTicks)
{
    const double low = std::min(0.0, static_cast<double>(lowestFen));
    const double high = std::max(0.0, static_cast<double>(highestFen));
    Axis axis;
    axis.unitText = u"元"_s;
    axis.ticks = { 0 };
    if (low == high)
        return axis;
    // On both sides of 0 there are at least a tick below, 0 itself and a tick above.
    const int most = std::max(mostTicks, low < 0 && high > 0 ? 3 : 2);
    double step = niceStep(std::max(1.0, (high - low) / most));
    axis.ticks = ticksAt(step, low, high);
    while (axis.ticks.size() > most) {
        step = niceStep(step * 1.5);
        axis.ticks = ticksAt(step, low, high);
    }
    chooseUnit(axis, std::max(high, -low), step);
    return axis;
}

QList<Group> groupsOf(const QRectF& plot, const Axis& axis, const QList<Flow>& flows)
{
    QList<Group> groups;
    if (flows.isEmpty())
        return groups;
    const double slotWidth = plot.width() / static_cast<double>(flows.size());
    const double barWidth = std::min(widestBar, slotWidth * barShare / 2);
    const auto y = [&](qint64 fen) {
        return plot.bottom() - axis.fraction(static_cast<double>(fen)) * plot.height();
    };
    const double zeroY = y(0);
    double left = plot.left();
    for (const Flow& flow : flows) {
        const double middle = left + slotWidth / 2;
        groups += { .slot = { left, plot.top(), slotWidth, plot.height() },
            .in = barBetween(middle - barWidth, barWidth, y(flow.inFen), zeroY, flow.inFen == 0),
            .out = barBetween(middle, barWidth, y(flow.outFen), zeroY, flow.outFen == 0),
            .net = { middle, y(flow.netFen) } };
        left += slotWidth;
    }
    return groups;
}

QList<QRectF> rowBars(const QRectF& plot, const QList<qint64>& values, double barHeight)
{
    QList<QRectF> bars;
    if (values.isEmpty())
        return bars;
    const double rowHeight = plot.height() / static_cast<double>(values.size());
    const qint64 largest = std::max<qint64>(1, *std::max_element(values.begin(), values.end()));
    double top = plot.top() + (rowHeight - barHeight) / 2;
    for (const qint64 value : values) {
        const double share = static_cast<double>(value) / static_cast<double>(largest);
        bars += { plot.left(), top, value > 0 ? std::max(1.0, share * plot.width()) : 0.0,
            barHeight };
        top += rowHeight;
    }
    return bars;
}

QList<double> shareWidths(const QList<qint64>& values, double width, double least)
{
    QList<double> widths(values.size(), 0.0);
    double room = width;
    double left = total(values);
    QList<bool> isFixed(values.size(), false);
    // Each part that is raised takes from the others, which may then need raising themselves.
    for (bool raised = true; raised && left > 0;) {
        raised = false;
        for (qsizetype i = 0; i < values.size(); ++i) {
            const auto value = static_cast<double>(std::max<qint64>(0, values.at(i)));
            if (isFixed.at(i) || value == 0 || value / left * room >= least)
                continue;
            widths[i] = std::min(least, room);
            isFixed[i] = raised = true;
            room -= widths.at(i);
            left -= value;
        }
    }
    for (qsizetype i = 0; i < values.size(); ++i) {
        if (!isFixed.at(i) && values.at(i) > 0)
            widths[i] = static_cast<double>(values.at(i)) / left * room;
    }
    return widths;
}

QList<int> fittingLabels(const QList<double>& centres, const QList<double>& widths, double gap)
{
    QList<int> shown;
    qsizetype stride = 1;
    while (stride < centres.size() && !fits(centres, widths, gap, stride))
        ++stride;
    for (qsizetype i = centres.size() - 1; i >= 0; i -= stride)
        shown.prepend(static_cast<int>(i));
    return shown;
}

QRectF besideItem(const QRectF& item, const QSizeF& box, const QRectF& bounds)
{
    constexpr double gap = 8;
    double left = item.right() + gap;
    if (left + box.width() > bounds.right()) {
        const bool fitsInside = item.width() >= box.width() + 2 * gap;
        left = (fitsInside ? item.right() : item.left()) - gap - box.width();
    }
    left = std::clamp(left, bounds.left(), std::max(bounds.left(), bounds.right() - box.width()));
    const double top = std::clamp(item.center().y() - box.height() / 2, bounds.top(),
        std::max(bounds.top(), bounds.bottom() - box.height()));
    return { QPointF(left, top), box };
}

} // namespace ChartScale
