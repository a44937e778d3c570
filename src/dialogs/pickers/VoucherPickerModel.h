#pragma once

#include "db/Voucher.h"
#include "dialogs/pickers/PickerModel.h"

/// Archived vouchers to tick.
class VoucherPickerModel final : public PickerModel {
    Q_OBJECT

public:
    enum Column { Tick, Thumbnail, Name, Type, Date, ColumnCount };
    VoucherPickerModel(const QList<Voucher>& vouchers, QObject* parent);

protected:
    QStringList headers() const override;
    qint64 idOf(qsizetype record) const override { return m_vouchers.at(record).id; }
    QVariant sortValue(qsizetype record, int column) const override;
    bool matches(qsizetype record, const QString& keyword) const override;
    QVariant cell(qsizetype record, int column, int role) const override;

private:
    QString pathOf(qsizetype record) const;

    QList<Voucher> m_vouchers;
    mutable QHash<qsizetype, QString> m_paths; // of the rows that were painted
};
