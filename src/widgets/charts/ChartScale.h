#pragma once

#include <QList>
#include <QRectF>
#include <QString>

/// The arithmetic of charts, apart from painting. Works in floating point: a damaged file may
/// hold amounts whose differences no whole number can carry.
namespace ChartScale {

/// An axis of amounts in fen between its first and its last tick; 0 is always on it.
struct Axis {
    QList<double> ticks; // ascending, in fen; only 0 when there is nothing to measure
    double unitFen = 100; // what a label's 1 stands for
    QString unitText; // "元", "万元" or "亿元"
    int decimals = 0;

    /// Where an amount lies between the first tick (0) and the last (1).
    double fraction(double fen) const;
    /// "1,200" in the axis's unit.
    QString label(double fen) const;
};

/// Ticks at steps of 1, 2 or 5 times a power of ten, from 2 to `mostTicks` of them.
[[nodiscard]] Axis axisFor(qint64 lowestFen, qint64 highestFen, int mostTicks);

/// One group of the bar chart.
struct Group {
    QRectF slot; // the group's part of the plot, in its whole height
    QRectF in;
    QRectF out;
    QPointF net;
};
struct Flow {
    qint64 inFen = 0;
    qint64 outFen = 0;
    qint64 netFen = 0;
};

/// Bars stand on the axis's 0; an amount other than 0 is at least one pixel high.
[[nodiscard]] QList<Group> groupsOf(const QRectF& plot, const Axis& axis, const QList<Flow>& flows);

/// Bars of lengths in proportion to their values, one below the other in rows of equal height.
[[nodiscard]] QList<QRectF> rowBars(
    const QRectF& plot, const QList<qint64>& values, double barHeight);

/// Parts of a width in proportion to their values. One that is not 0 gets at least `least`, so
/// that it can be seen and hit.
[[nodiscard]] QList<double> shareWidths(const QList<qint64>& values, double width, double least);

/// The labels that can be shown without touching each other: every n-th, counted back from the
/// last, with the smallest n that works.
[[nodiscard]] QList<int> fittingLabels(
    const QList<double>& centres, const QList<double>& widths, double gap);

/// A box next to an item: at its right where there is room, else on its right end where it is wide
/// enough, else at its left; always inside the bounds.
[[nodiscard]] QRectF besideItem(const QRectF& item, const QSizeF& box, const QRectF& bounds);

} // namespace ChartScale
