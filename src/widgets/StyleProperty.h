#pragma once

#include <QStringView>

class QWidget;

/// Sets a property that the style sheet selects by and lets the style look again: it evaluates
/// its selectors only when a widget is polished.
void setStyleProperty(QWidget* widget, const char* name, QStringView value);
