#pragma once

#include "db/Voucher.h"

#include <QAbstractTableModel>
#include <QSet>

/// The vouchers of an entry, and what becomes of their links when the entry is saved.
class AttachedVoucherModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Description, Change, ColumnCount };
    enum class State { Attached, Removed, Added };

    using QAbstractTableModel::QAbstractTableModel;

    /// The vouchers that are linked already.
    void setAttached(const QList<Voucher>& vouchers);
    /// Links a voucher with the next save. One that is marked for removal is kept instead; one
    /// that is there already changes nothing.
    void add(const Voucher& voucher);
    /// Marks a linked voucher for removal, or keeps it after all; takes a new one out again.
    void toggle(int row);

    qint64 idAt(int row) const { return m_rows.at(row).voucher.id; }
    State stateAt(int row) const { return m_rows.at(row).state; }

    QList<qint64> addedIds() const { return idsOf(State::Added); }
    QList<qint64> removedIds() const { return idsOf(State::Removed); }
    /// The vouchers that the entry has once it is saved.
    QSet<qint64> keptIds() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// "[银行回单] 三月电费  2025-03-31"
    static QString lineOf(const Voucher& voucher);

signals:
    /// What will be linked has changed.
    void changed();

private:
    struct Row {
        Voucher voucher;
        State state = State::Attached;
    };

    QList<qint64> idsOf(State state) const;
    void setState(int row, State state);
    static QVariant colourOf(State state, int column);

    QList<Row> m_rows;
};
