#pragma once

#include "db/Transaction.h"

#include <QAbstractTableModel>
#include <QList>

/// The ledger entries of a project.
class ProjectEntriesModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column {
        Date,
        Summary,
        DirectionColumn,
        Amount,
        CategoryColumn,
        Risk,
        Actions,
        ColumnCount
    };

    using QAbstractTableModel::QAbstractTableModel;

    void setEntries(const QList<Transaction>& entries);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    static QString text(const Transaction& entry, int column);

    QList<Transaction> m_entries;
};
