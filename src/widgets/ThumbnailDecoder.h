#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// Small pictures of JPEG, PNG and BMP files and of the first page of PDF files.
namespace ThumbnailDecoder {

/// The picture fitted into `box` pixels, upright and never enlarged. Null when the file is broken,
/// of another type or so large that decoding it would take the machine's memory. May be called from
/// any thread.
[[nodiscard]] QImage decode(const QString& absolutePath, QSize box);

} // namespace ThumbnailDecoder
