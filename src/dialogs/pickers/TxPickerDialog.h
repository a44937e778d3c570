#pragma once

#include "dialogs/FormDialog.h"

#include <QList>

class TxPickerModel;

/// Lets the user tick ledger entries out of all there are.
class TxPickerDialog final : public FormDialog {
    Q_OBJECT

public:
    /// Opens with the entries `chosen` ticked; those that are gone are left out.
    explicit TxPickerDialog(const QList<qint64>& chosen, QWidget* parent = nullptr);

    /// The ticked entries in the order of the table, shown by the search or not: the new choice as
    /// a whole, not an addition to the former one.
    QList<qint64> selectedIds() const;

private:
    TxPickerModel* m_model;
};
