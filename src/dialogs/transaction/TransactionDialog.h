#pragma once

#include "db/Transaction.h"
#include "dialogs/FormDialog.h"

class AttachedVouchers;
class EntryForm;
class QScrollArea;
class RiskPreviewPanel;

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

protected:
    void showEvent(QShowEvent* event) override;
    bool hasUnsavedInput() const override;
    QString discardQuestion() const override;

private:
    TransactionDialog(const QString& title, const Transaction& entry, QWidget* parent);

    QWidget* buildSections();
    void buildButtons();
    void onSave();
    void onAddExistingVoucher();
    void onAddNewVoucher(const QStringList& files);
    void updatePreview();

    Transaction m_entry; // what the form makes of the entry as it was opened
    bool m_isLoaded = true;
    bool m_wasShown = false;
    int m_importedVouchers = 0;
    QScrollArea* m_sections;
    EntryForm* m_form;
    AttachedVouchers* m_vouchers;
    RiskPreviewPanel* m_preview;
};
