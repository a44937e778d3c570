#pragma once

#include <QString>

class QPushButton;
class QWidget;

enum class ButtonRole { Default, Primary, Danger, Link };

/// Takes effect at once. Only a primary button answers the Enter key of a dialog.
void setButtonRole(QPushButton* button, ButtonRole role);

QPushButton* makeButton(const QString& text, ButtonRole role, QWidget* parent);
