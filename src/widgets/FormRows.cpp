#include "widgets/FormRows.h"

#include "widgets/TextRole.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int fieldHeight = 32;

// Field and hint as one cell, so that the label stays beside the field.
FormRow cellWithHint(QWidget* field, const QString& text)
{
    FormRow row;
    row.cell = new QWidget;
    row.hint = new QLabel(text, row.cell);
    row.hint->setTextFormat(Qt::PlainText);
    row.hint->setWordWrap(true);
    setTextRole(row.hint, TextRole::Hint);
    auto* column = new QVBoxLayout(row.cell);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(field);
    column->addWidget(row.hint);
    return row;
}

} // namespace

FormRows::FormRows(QWidget* parent)
    : QFormLayout(parent)
{
    setFieldGrowthPolicy(AllNonFixedFieldsGrow);
    setRowWrapPolicy(DontWrapRows);
    setLabelAlignment(Qt::AlignRight | Qt::AlignTop);
    setFormAlignment(Qt::AlignLeft | Qt::AlignTop);
    setHorizontalSpacing(12);
    setVerticalSpacing(12);
}

FormRow FormRows::addRow(
    const QString& label, QWidget* field, Required required, const QString& hint)
{
    return addWrappedRow(label, field, field, required, hint);
}

FormRow FormRows::addWrappedRow(
    const QString& label, QWidget* wrapper, QWidget* field, Required required, const QString& hint)
{
    FormRow row = hint.isEmpty() ? FormRow { .cell = wrapper } : cellWithHint(wrapper, hint);
    row.label = new FieldLabel(label, required);
    row.label->setFixedHeight(fieldHeight);
    row.label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row.label->nameField(field);
    if (!hint.isEmpty())
        field->setAccessibleDescription(hint);
    // A text area keeps its Tab for what the key does everywhere else.
    if (auto* area = qobject_cast<QPlainTextEdit*>(field))
        area->setTabChangesFocus(true);
    QFormLayout::addRow(row.label, row.cell);
    return row;
}
