#pragma once

#include "db/Transaction.h"

#include <QAbstractTableModel>
#include <QHash>

/// The entries that a search of the ledger found, in its order.
class LedgerModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column {
        Date,
        Summary,
        DirectionText,
        Amount,
        OwnerAccount,
        Counterparty,
        CounterpartyAccount,
        CategoryText,
        Project,
        Vouchers,
        Risk,
        Actions,
        ColumnCount
    };
    enum Role {
        IdRole = Qt::UserRole,
        DirectionRole,
        SortRole, // a number whose order is the column's order; Chinese by pinyin
    };

    using QAbstractTableModel::QAbstractTableModel;

    void setEntries(const QList<Transaction>& entries);
    const QList<Transaction>& entries() const { return m_entries; }
    const Transaction& entryAt(int row) const { return m_entries.at(row); }
    /// -1 when the entry is not shown.
    int rowOf(qint64 id) const;
    /// What `SortRole` gives, without a variant around it.
    qint64 sortValue(int row, int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QVariant displayed(const Transaction& entry, int column) const;
    /// The place of each row's text among the texts of the column, made when first asked for.
    const QList<qint64>& textRanks(int column) const;

    QList<Transaction> m_entries;
    mutable QHash<qint64, int> m_rows; // by id, made when first asked for
    mutable QHash<int, QList<qint64>> m_ranks; // by column
};
