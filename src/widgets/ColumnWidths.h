#pragma once

#include <span>

class QTableView;

/// How the columns of a table share the room there is.
namespace ColumnWidths {

struct Width {
    int narrowest;
    int share; // of what the narrowest widths leave over
};

/// Gives each column its width, in the order of the model's columns; together they take the whole
/// room, or more when it has no place for the narrowest widths.
void share(QTableView* table, std::span<const Width> widths, int room);

} // namespace ColumnWidths
