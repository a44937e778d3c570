#pragma once

#include "widgets/ButtonRole.h"

#include <QString>

class QWidget;

/// The program's message boxes: plain text, our own button texts, modal. Nothing else builds one.
namespace MessageBox {

void info(QWidget* parent, const QString& title, const QString& text);
void warn(QWidget* parent, const QString& title, const QString& text);
void critical(QWidget* parent, const QString& title, const QString& text);

/// True when the user chose `acceptText`. Escape and closing reject. A `Danger` question has the
/// rejecting button as its default.
[[nodiscard]] bool ask(QWidget* parent, const QString& title, const QString& text,
    const QString& acceptText, const QString& rejectText = QStringLiteral("取消"),
    ButtonRole acceptRole = ButtonRole::Primary);

} // namespace MessageBox
