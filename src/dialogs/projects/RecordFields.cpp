#include "dialogs/projects/RecordFields.h"

#include "services/projects/ProjectRules.h"
#include "widgets/AmountField.h"
#include "widgets/DateEditor.h"

#include <QLineEdit>
#include <QPlainTextEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace RecordFields {

QLineEdit* makeText(
    const QString& objectName, const QString& placeholder, int limit, QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(objectName);
    edit->setPlaceholderText(placeholder);
    if (limit > 0)
        edit->setMaxLength(limit);
    return edit;
}

QPlainTextEdit* makeNote(int height, QWidget* parent)
{
    auto* note = new QPlainTextEdit(parent);
    note->setObjectName(u"note"_s);
    note->setPlaceholderText(u"选填，≤500 字"_s);
    note->setFixedHeight(height);
    return note;
}

AmountField* makeAmount(const QString& objectName, QWidget* parent)
{
    auto* field = new AmountField(parent);
    field->setObjectName(objectName);
    field->setMaximum(static_cast<double>(ProjectRules::largestAmountFen) / 100.0);
    return field;
}

void show(QLineEdit* edit, const QString& text)
{
    edit->setMaxLength(std::max(edit->maxLength(), static_cast<int>(text.size())));
    edit->setText(text);
    edit->setCursorPosition(0);
}

void show(AmountField* field, qint64 fen)
{
    field->setMaximum(std::max(field->maximum(), static_cast<double>(fen) / 100.0));
    field->setAmountFen(fen);
}

void show(DateEditor* editor, QDate date, const QString& stored)
{
    if (date.isValid())
        editor->setDate(date);
    else
        editor->setText(stored);
}

} // namespace RecordFields
