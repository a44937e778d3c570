#include "services/documents/PageBreaks.h"

namespace PageBreaks {

namespace {

// The gap that ends a sheet: the first forced one, else the last one of the best kind.
const Gap* bestGap(const QList<Gap>& gaps, qreal top, qreal limit)
{
    const Gap* best = nullptr;
    for (const Gap& gap : gaps) {
        if (gap.end <= top)
            continue;
        if (gap.end > limit)
            break;
        if (gap.kind == Gap::Forced)
            return &gap;
        if (!best || gap.kind >= best->kind)
            best = &gap;
    }
    return best;
}

} // namespace

QList<Sheet> cut(const QList<Gap>& gaps, qreal top, qreal bottom, qreal height)
{
    if (height <= 0)
        return { { { top, bottom }, {} } };
    QList<Sheet> sheets;
    qreal start = top;
    Strip head;
    for (;;) {
        const qreal limit = start + height - head.height();
        const bool restFits = bottom <= limit;
        const Gap* gap = bestGap(gaps, start, qMin(limit, bottom));
        if (restFits && !(gap && gap->kind == Gap::Forced)) {
            sheets.append({ { start, bottom }, head });
            return sheets;
        }
        sheets.append({ { start, gap ? gap->end : limit }, head });
        start = gap ? qMax(gap->end, gap->next) : limit;
        if (gap)
            head = gap->head.height() <= height / 3 ? gap->head : Strip();
    }
}

} // namespace PageBreaks
