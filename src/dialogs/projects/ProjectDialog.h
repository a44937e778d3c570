#pragma once

#include "db/Project.h"
#include "dialogs/FormDialog.h"
#include "services/projects/ProjectRules.h"

class AmountField;
class DateEditor;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;

/// Creates a project or edits one. Accepted only after it was saved.
class ProjectDialog final : public FormDialog {
    Q_OBJECT

public:
    /// A new project when `id` is 0.
    explicit ProjectDialog(qint64 id, QWidget* parent = nullptr);

    /// The project that was saved; 0 before a new one is.
    qint64 projectId() const { return m_project.id; }

public slots:
    /// A project that cannot be read is told in a box, and the dialog does not show.
    int exec() override;

protected:
    bool hasUnsavedInput() const override;

private:
    void load(qint64 id);
    void makeFields();
    void buildForm();
    void showProject();
    Project edited() const;
    void onSave();
    void focus(ProjectRules::ProjectField field);

    Project m_project; // as the form shows it at first
    QString m_unreadable; // why the dialog cannot be shown, in Chinese
    QLineEdit* m_name = nullptr;
    QLineEdit* m_code = nullptr;
    QLineEdit* m_clientName = nullptr;
    QComboBox* m_status = nullptr;
    DateEditor* m_start = nullptr;
    DateEditor* m_end = nullptr;
    QCheckBox* m_hasBudget = nullptr;
    AmountField* m_budget = nullptr;
    QLineEdit* m_manager = nullptr;
    QPlainTextEdit* m_note = nullptr;
};
