#include "widgets/PageZoom.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr qreal mostPixels = 24'000'000;
constexpr auto steps = std::to_array<qreal>(
    { 0.05, 0.1, 0.15, 0.25, 0.33, 0.5, 0.67, 0.8, 1, 1.25, 1.5, 2, 3, 4, 6, 8, 12, 16 });
static_assert(steps.front() == PageZoom::smallest && steps.back() == PageZoom::largest);

} // namespace

qreal PageZoom::factorFor(const QSizeF& naturalSize, bool scales) const
{
    if (fit == Fit::None || naturalSize.isEmpty())
        return factor;
    if (fit == Fit::Width)
        return std::clamp((room.width() - scrollBarWidth) / naturalSize.width(), smallest, largest);
    const qreal whole
        = std::min(room.width() / naturalSize.width(), room.height() / naturalSize.height());
    return std::clamp(scales ? whole : std::min(whole, 1.0), 0.001, largest);
}

QSizeF PageZoom::shownSize(const QSizeF& naturalSize, bool scales) const
{
    return naturalSize * factorFor(naturalSize, scales);
}

QSize PageZoom::pixelsFor(const QSizeF& naturalSize, bool scales) const
{
    QSizeF pixels = shownSize(naturalSize, scales) * dpr;
    if (!scales)
        pixels = pixels.boundedTo(naturalSize);
    const qreal area = pixels.width() * pixels.height();
    if (area > mostPixels)
        pixels *= std::sqrt(mostPixels / area);
    return pixels.toSize().expandedTo({ 1, 1 });
}

qreal PageZoom::step(qreal factor, bool larger)
{
    // A fitted page lies between two steps; one beside it would hardly be seen.
    constexpr qreal margin = 1.02;
    if (larger) {
        const auto next = std::upper_bound(steps.begin(), steps.end(), factor * margin);
        return next != steps.end() ? *next : largest;
    }
    const auto next = std::lower_bound(steps.begin(), steps.end(), factor / margin);
    return next != steps.begin() ? *(next - 1) : smallest;
}
