#include "pages/ledger/LedgerAmountDelegate.h"

#include "core/Codes.h"
#include "pages/ledger/LedgerModel.h"

void LedgerAmountDelegate::initStyleOption(
    QStyleOptionViewItem* option, const QModelIndex& index) const
{
    RowDelegate::initStyleOption(option, index);
    const auto direction = static_cast<Direction>(index.data(LedgerModel::DirectionRole).toInt());
    option->text.prepend(direction == Direction::In ? u'+' : u'-');
}
