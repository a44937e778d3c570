#pragma once

#include <QList>
#include <QtGlobal>

/// Where a long page may be cut into sheets. Pure geometry; all lengths in one unit, downwards.
namespace PageBreaks {

/// A part of the long page, from edge to edge.
struct Strip {
    qreal top = 0;
    qreal bottom = 0;

    qreal height() const { return bottom - top; }
};

/// A gap between two lines or table rows.
struct Gap {
    qreal end = 0; // where what lies above ends
    qreal next = 0; // where what lies below begins
    enum Kind {
        Torn, // tears a table row: only when it fills a whole sheet
        Last, // parts what belongs together: only when nothing better fits
        Free,
        Forced, // the text asks for a new sheet here
    } kind
        = Free;
    Strip head; // shown once more above what follows when a sheet begins here; may be empty
};

/// What one sheet shows of the long page: the head, when there is one, and the content below it.
struct Sheet {
    Strip content;
    Strip head;
};

/// Cuts what lies between `top` and `bottom` into sheets of at most `height`, each as full as the
/// gaps allow; `gaps` run downwards. What has no gap at all is cut through. A head that would take
/// more than a third of a sheet is not repeated.
/// A height of 0 or less gives one sheet.
QList<Sheet> cut(const QList<Gap>& gaps, qreal top, qreal bottom, qreal height);

} // namespace PageBreaks
