#pragma once

#include "Problem.h"

class QAbstractButton;
class QWidget;

/// What the demo does to windows in its user's place.
namespace Hands {

/// The visible, enabled button with this text, mnemonics aside; null when there is none.
QAbstractButton* buttonIn(const QWidget& window, const QString& text);

/// Presses that button.
[[nodiscard]] Problem press(const QWidget& window, const QString& text);

/// Runs the enabled command of that text, of menus and keys, of a visible part of the window.
[[nodiscard]] Problem trigger(const QWidget& window, const QString& text);

/// Puts a text into the line edit of that object name.
[[nodiscard]] Problem type(const QWidget& window, const QString& objectName, const QString& text);

/// Chooses the first rows of the visible table of that object name.
[[nodiscard]] Problem selectRows(const QWidget& window, const QString& tableName, int count = 1);

/// Runs a command of that table on its first row.
[[nodiscard]] Problem triggerOnRow(
    const QWidget& window, const QString& tableName, const QString& command);

/// Scrolls the largest part of the window that scrolls.
void scrollToBegin(const QWidget& window);
void scrollToEnd(const QWidget& window);

/// Lets the event loop run until what was shown is laid out and painted.
void waitForPainting();

/// Waits as well for what comes later: thumbnails, previews.
void waitUntilStill(QWidget& window);

} // namespace Hands
