#include "widgets/ColumnWidths.h"

#include <QTableView>

#include <algorithm>

namespace ColumnWidths {

void share(QTableView* table, std::span<const Width> widths, int room)
{
    int left = room;
    int shares = 0;
    for (const Width& width : widths) {
        left -= width.narrowest;
        shares += width.share;
    }
    left = std::max(left, 0);
    int column = 0;
    for (const Width& width : widths) {
        // What rounding leaves goes to the next share, so that the last column ends at the border.
        const int extra = shares > 0 ? left * width.share / shares : 0;
        left -= extra;
        shares -= width.share;
        table->setColumnWidth(column++, width.narrowest + extra);
    }
}

} // namespace ColumnWidths
