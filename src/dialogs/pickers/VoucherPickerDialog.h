#pragma once

#include "dialogs/FormDialog.h"

#include <QList>
#include <QSet>

class VoucherPickerModel;

/// Lets the user tick archived vouchers that are to be added to something.
class VoucherPickerDialog final : public FormDialog {
    Q_OBJECT

public:
    /// Lists the whole archive without `excluded`, the vouchers that are there already.
    explicit VoucherPickerDialog(const QSet<qint64>& excluded, QWidget* parent = nullptr);

    /// The ticked vouchers in the order of the table, shown by the search or not.
    QList<qint64> selectedIds() const;

private:
    VoucherPickerModel* m_model;
};
