#include "widgets/ColumnHeads.h"

#include <QString>

namespace ColumnHeads {

QVariant data(std::span<const QStringView> titles, int section, Qt::Orientation orientation,
    int role, int numberColumn)
{
    if (orientation != Qt::Horizontal || section < 0 || section >= std::ssize(titles))
        return {};
    if (role == Qt::DisplayRole)
        return titles[static_cast<std::size_t>(section)].toString();
    if (role == Qt::TextAlignmentRole && section == numberColumn)
        return numberAlignment();
    return {};
}

QVariant numberAlignment()
{
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
}

} // namespace ColumnHeads
