#pragma once

#include "db/Transaction.h"

#include <QAbstractTableModel>
#include <QSet>

/// The entries of one direction that a fund decision may cover, with a tick each. Ticks outlast
/// filters, refreshes and a change of direction; what is ticked is never filtered away, so that
/// no sum holds what nobody sees.
class FundEntryModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Tick, Date, Summary, Counterparty, Amount, ColumnCount };

    struct View {
        Direction direction = Direction::In;
        bool ownerFlowsOnly = true;
        bool uncoveredOnly = true;
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Newest first. Ticks of entries that are gone are dropped; how many is returned.
    qsizetype setEntries(const QList<Transaction>& entries, const QSet<qint64>& covered);
    const QList<Transaction>& entries() const { return m_entries; }
    void setView(const View& view);

    const QSet<qint64>& ticked() const { return m_ticked; }
    void setTicked(const QSet<qint64>& ids);
    /// Ticks or unticks every row shown.
    void tickShown(bool ticked);
    /// How many of the rows shown are ticked.
    int tickedRows() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    void ticksChanged();

private:
    const Transaction& entryAt(int row) const { return m_entries.at(m_shown.at(row)); }
    bool isTicked(const Transaction& entry) const { return m_ticked.contains(entry.id); }
    bool isCovered(const Transaction& entry) const { return m_covered.contains(entry.id); }
    bool isShown(const Transaction& entry) const;
    void rebuild();
    QString text(const Transaction& entry, int column) const;
    QVariant color(const Transaction& entry, int column) const;

    QList<Transaction> m_entries;
    QSet<qint64> m_covered;
    View m_view;
    QSet<qint64> m_ticked;
    QList<qsizetype> m_shown; // places in m_entries
};
