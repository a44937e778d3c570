#pragma once

#include <QVariant>

#include <span>

/// What the models of tables tell about their columns.
namespace ColumnHeads {

/// The header's data of a column: its title, and the side on which it stands. That is the left
/// except above numbers, of which a table has one column at the most.
QVariant data(std::span<const QStringView> titles, int section, Qt::Orientation orientation,
    int role, int numberColumn = -1);

/// Where the cells of the column of numbers stand.
QVariant numberAlignment();

} // namespace ColumnHeads
