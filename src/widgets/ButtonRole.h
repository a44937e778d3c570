#pragma once

#include <QString>

class QPushButton;
class QWidget;

enum class ButtonRole { Default, Primary, Danger, Link };

/// Takes effect at once. Whatever its role, Enter presses the button that has the focus; with the
/// focus elsewhere it presses the dialog's default button. Only a primary button becomes that one
/// by itself.
void setButtonRole(QPushButton* button, ButtonRole role);

QPushButton* makeButton(const QString& text, ButtonRole role, QWidget* parent);
