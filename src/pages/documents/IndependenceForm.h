#pragma once

#include "pages/documents/DocumentForm.h"

#include <QList>

class DateEditor;
class QCheckBox;
class QPlainTextEdit;

/// The owner's statement that the company's property is separate: base date and measures.
class IndependenceForm final : public DocumentForm {
    Q_OBJECT

public:
    explicit IndependenceForm(QWidget* parent = nullptr);

protected:
    QWidget* firstField() const override;
    QString firstProblem() const override;
    QString previewHtml() const override;
    DocumentResult generate() override;
    void prepareNext() override;

private:
    IndependenceStatementInput input() const;

    DateEditor* m_baseDate = nullptr;
    QList<QCheckBox*> m_measures;
    QPlainTextEdit* m_further = nullptr;
};
