#pragma once

#include "db/Transaction.h"
#include "dialogs/pickers/PickerModel.h"

/// Ledger entries to tick.
class TxPickerModel final : public PickerModel {
    Q_OBJECT

public:
    enum Column { Tick, Date, Summary, Counterparty, Amount, CategoryName, Risk, ColumnCount };

    TxPickerModel(const QList<Transaction>& entries, QObject* parent);

protected:
    QStringList headers() const override;
    qint64 idOf(qsizetype record) const override { return m_entries.at(record).id; }
    QVariant sortValue(qsizetype record, int column) const override;
    bool matches(qsizetype record, const QString& keyword) const override;
    QVariant cell(qsizetype record, int column, int role) const override;
    Qt::Alignment alignment(int column) const override;

private:
    static QString textOf(const Transaction& entry, int column);

    QList<Transaction> m_entries;
};
