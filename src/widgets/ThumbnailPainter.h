#pragma once

#include <QRect>
#include <QString>

class QAbstractItemView;
class QPainter;

/// How views of files show what is in them.
namespace ThumbnailPainter {

/// Paints the thumbnail of a file centred in `box`; an icon of its type while the picture is being
/// made, and for good where there is none. An empty path has none.
void paint(QPainter* painter, const QRect& box, const QString& absolutePath);

/// Paints, in the same place, that the file is missing.
void paintMissing(QPainter* painter, const QRect& box);

/// Repaints the view as its pictures get ready.
void follow(QAbstractItemView* view);

} // namespace ThumbnailPainter
