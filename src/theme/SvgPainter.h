#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

namespace SvgPainter {

/// The drawing at `path`, fitted into `deviceSize` pixels, its `currentColor` replaced by
/// `color`; empty when there is no such drawing. Lines become finer when `fine` is set, so that
/// a large icon does not look heavy.
QPixmap render(const QString& path, const QColor& color, QSize deviceSize, bool fine = false);

} // namespace SvgPainter
