#include "Hands.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAction>
#include <QEventLoop>
#include <QLineEdit>
#include <QScrollBar>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace Hands {

namespace {

// Enough for layouts, late paint events and pictures that another thread decodes.
constexpr int paintingMs = 60;

} // namespace

QAbstractButton* buttonIn(const QWidget& window, const QString& text)
{
    for (auto* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->isEnabled() && button->text().remove(u'&') == text)
            return button;
    }
    return nullptr;
}

Problem press(const QWidget& window, const QString& text)
{
    QAbstractButton* button = buttonIn(window, text);
    if (!button)
        return u"\"%1\" has no button \"%2\""_s.arg(window.windowTitle(), text);
    button->click();
    return {};
}

Problem trigger(const QWidget& window, const QString& text)
{
    for (const auto* part : window.findChildren<QWidget*>()) {
        for (QAction* command : part->actions()) {
            if (part->isVisible() && command->isEnabled() && command->text() == text) {
                command->trigger();
                return {};
            }
        }
    }
    return u"\"%1\" has no command \"%2\""_s.arg(window.windowTitle(), text);
}

Problem type(const QWidget& window, const QString& objectName, const QString& text)
{
    auto* edit = window.findChild<QLineEdit*>(objectName);
    if (!edit)
        return u"\"%1\" has no field %2"_s.arg(window.windowTitle(), objectName);
    edit->setText(text);
    return {};
}

void scrollToEnd(const QWidget& window)
{
    QScrollBar* longest = nullptr;
    for (const auto* area : window.findChildren<QAbstractScrollArea*>()) {
        QScrollBar* bar = area->verticalScrollBar();
        if (area->isVisible() && (!longest || bar->maximum() > longest->maximum()))
            longest = bar;
    }
    if (longest)
        longest->setValue(longest->maximum());
}

void waitForPainting()
{
    QEventLoop loop;
    QTimer::singleShot(paintingMs, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace Hands
