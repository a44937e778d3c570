#pragma once

#include "db/Transaction.h"
#include "dialogs/FormDialog.h"

class FormRows;
class QButtonGroup;
class QPlainTextEdit;

/// A person's judgement of an entry's risk, with the reason for it, in place of the automatic
/// level. Accepted only after it was stored.
class RiskReviewDialog final : public FormDialog {
    Q_OBJECT

public:
    explicit RiskReviewDialog(qint64 entryId, QWidget* parent = nullptr);

public slots:
    /// An entry that cannot be loaded is told in a box, and the dialog does not show.
    int exec() override;

protected:
    bool hasUnsavedInput() const override;

private:
    void addFacts(FormRows* rows);
    QWidget* buildAutomatic();
    QWidget* buildChoices();
    void focusChoice();
    void onSave();

    Transaction m_entry;
    QButtonGroup* m_choices;
    QPlainTextEdit* m_note;
    int m_choiceBefore = -1;
};
