#include "pages/ledger/LedgerSort.h"

#include "pages/ledger/LedgerModel.h"

LedgerSort::LedgerSort(LedgerModel* ledger, QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_ledger(ledger)
{
    setSortRole(LedgerModel::SortRole);
    setSourceModel(ledger);
}

bool LedgerSort::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    return m_ledger->sortValue(left.row(), left.column())
        < m_ledger->sortValue(right.row(), right.column());
}
