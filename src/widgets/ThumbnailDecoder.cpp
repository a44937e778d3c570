#include "widgets/ThumbnailDecoder.h"

#include "widgets/PageDecoder.h"

namespace ThumbnailDecoder {

QImage decode(const QString& absolutePath, QSize box)
{
    const auto fitted = [box](const QSizeF& natural, bool scales) {
        const bool isSmall = natural.width() <= box.width() && natural.height() <= box.height();
        if (isSmall && !scales)
            return natural.toSize();
        const QSize scaled = natural.scaled(box, Qt::KeepAspectRatio).toSize();
        return scaled.expandedTo({ 1, 1 }).boundedTo(box.expandedTo({ 1, 1 }));
    };
    return PageDecoder::decode(absolutePath, 0, fitted).image;
}

} // namespace ThumbnailDecoder
