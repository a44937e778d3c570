#pragma once

#include <QSize>

/// How large a page is shown in a view: fitted into it, or at a factor of its natural size.
struct PageZoom {
    enum class Fit { None, Page, Width };

    static constexpr qreal smallest = 0.05;
    static constexpr qreal largest = 16;

    Fit fit = Fit::Page;
    qreal factor = 1; // where nothing is fitted
    QSize room; // of the view without scroll bars
    int scrollBarWidth = 0;
    qreal dpr = 1;

    /// A small picture is not enlarged to fit as a page.
    qreal factorFor(const QSizeF& naturalSize, bool scales) const;
    QSizeF shownSize(const QSizeF& naturalSize, bool scales) const;
    /// What is worth decoding: no more than a picture has, and no more than memory is good for.
    QSize pixelsFor(const QSizeF& naturalSize, bool scales) const;

    /// The next of the usual factors, up or down.
    static qreal step(qreal factor, bool larger);
};
