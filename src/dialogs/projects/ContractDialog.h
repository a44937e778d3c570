#pragma once

#include "db/Contract.h"
#include "dialogs/FormDialog.h"
#include "services/projects/ProjectRules.h"

class AmountField;
class DateEditor;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;

/// Registers a contract of a project or edits one. Accepted only after it was saved.
class ContractDialog final : public FormDialog {
    Q_OBJECT

public:
    /// A new contract of the project when `contractId` is 0; a stored one stays with its project.
    ContractDialog(qint64 projectId, qint64 contractId, QWidget* parent = nullptr);

    /// The contract that was saved; 0 before a new one is.
    qint64 contractId() const { return m_contract.id; }

public slots:
    /// A contract that cannot be read is told in a box, and the dialog does not show.
    int exec() override;

protected:
    bool hasUnsavedInput() const override;

private:
    void load(qint64 projectId, qint64 contractId);
    void makeFields();
    void buildForm();
    void showContract();
    Contract edited() const;
    void onSave();
    void focus(ProjectRules::ContractField field);

    Contract m_contract; // as the form shows it at first
    QString m_unreadable; // why the dialog cannot be shown, in Chinese
    QLineEdit* m_name = nullptr;
    QLineEdit* m_code = nullptr;
    QLineEdit* m_partyB = nullptr;
    AmountField* m_amount = nullptr;
    DateEditor* m_signDate = nullptr;
    QComboBox* m_status = nullptr;
    QPlainTextEdit* m_note = nullptr;
};
