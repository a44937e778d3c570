#pragma once

#include <QDate>
#include <QString>

class AmountField;
class DateEditor;
class FormRows;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

/// Editors for fields of stored records. None of them alters a value merely by showing it: a text
/// longer than the limit, an amount above it and a date that is none stay as they are until
/// somebody changes them.
namespace RecordFields {

QLineEdit* makeText(
    const QString& objectName, const QString& placeholder, int limit, QWidget* parent);
QPlainTextEdit* makeNote(int height, QWidget* parent);
AmountField* makeAmount(const QString& objectName, QWidget* parent);

void show(QLineEdit* edit, const QString& text);
void show(AmountField* field, qint64 fen);
/// `stored` is shown, and marked as wrong, where it is no day.
void show(DateEditor* editor, QDate date, const QString& stored);

} // namespace RecordFields
