#pragma once

#include "db/Transaction.h"
#include "dialogs/FormDialog.h"

/// Registers an entry of the fund ledger or edits one, together with its vouchers. Accepted only
/// after the entry was saved and the ledger was re-evaluated.
class TransactionDialog final : public FormDialog {
    Q_OBJECT

public:
    /// Edits the entry; registers a new one when `id` is 0.
    explicit TransactionDialog(qint64 id, QWidget* parent = nullptr);
    /// Registers a new entry that starts with the values of another one, dated today and without
    /// its vouchers.
    explicit TransactionDialog(const Transaction& pattern, QWidget* parent = nullptr);

    /// The entry that was saved; 0 before a new one is.
    qint64 entryId() const { return m_entry.id; }

public slots:
    /// An entry that cannot be loaded is told in a box, and the dialog does not show.
    int exec() override;

private:
    Transaction m_entry;
    bool m_isLoaded = true;
};
