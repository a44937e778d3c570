#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <functional>

/// The pages of files as pictures: JPEG, PNG and BMP files, which have one, and PDF files. May be
/// called from any thread.
namespace PageDecoder {

enum class Problem { None, Missing, Damaged, Locked, TooLarge };

struct Page {
    Problem problem = Problem::None;
    QImage image; // upright, on white paper; null when there is a problem
    QSizeF naturalSize; // upright, in pixels; known also of a picture that is too large
    int pageCount = 0;
    bool scales = false; // sharp in every size
};

/// The pixels that a page of this natural size is wanted in.
using Sizing = std::function<QSize(const QSizeF& naturalSize, bool scales)>;

/// A page that does not exist gives the nearest one. A picture is never enlarged.
[[nodiscard]] Page decode(const QString& absolutePath, int page, const Sizing& sizing);

} // namespace PageDecoder
