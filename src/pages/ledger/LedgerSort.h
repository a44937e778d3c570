#pragma once

#include <QSortFilterProxyModel>

class LedgerModel;

/// The entries by any column; entries that are equal there keep the order of the search, which is
/// also what is shown while no column is chosen.
class LedgerSort final : public QSortFilterProxyModel {
    Q_OBJECT

public:
    explicit LedgerSort(LedgerModel* ledger, QObject* parent = nullptr);

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    LedgerModel* m_ledger;
};
