#pragma once

#include <QStringList>

#include <functional>

class QAbstractButton;
class QAbstractItemView;
class QDialog;
class QWidget;

/// Windows as their user reads and works them. Whatever is not visible is not found.
namespace Hands {

/// Shows a window; whether it is the active one, which keys reach.
[[nodiscard]] bool show(QWidget& window);

/// The button with this text (mnemonics aside) that can be clicked, or null.
QAbstractButton* button(const QWidget& window, const QString& text);

/// Clicks the button with this text; fails the test when there is none to click.
void press(const QWidget& window, const QString& text);

/// Whether a label with just this text is to be seen.
bool shows(const QWidget& window, const QString& text);

/// The texts of a column, from the top.
QStringList column(const QAbstractItemView* view, int column, int role = Qt::DisplayRole);

/// Clicks the `part`-th of `parts` equal parts of a cell.
void clickCell(const QAbstractItemView* view, int row, int column, int part = 0, int parts = 1);

/// The names of what Tab reaches, from the present place on: by its label, else by its own text.
QStringList namesByTab(const QWidget& window, int count);

/// Drops files over the middle of a widget, as a file manager does that would move them; whether
/// they were taken, and without taking them from the sender.
bool dropFiles(QWidget* target, const QStringList& paths);

/// Answers Qt's own chooser with a file or folder, as typed: its list is still being read.
std::function<void(QDialog*)> choosePath(const QString& path);

/// Does the work; whether a notice of work in progress stood meanwhile.
bool showsNotice(const std::function<void()>& work);

} // namespace Hands
