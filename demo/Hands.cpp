#include "Hands.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAction>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QImage>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPixmap>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace Hands {

namespace {

// Enough for layouts, late paint events and pictures that another thread decodes.
constexpr int paintingMs = 60;
constexpr int stillMs = 700;
constexpr int patienceMs = 10'000;

// Of the largest part of the window that scrolls; null when none does.
QScrollBar* mainScrollBar(const QWidget& window)
{
    const QAbstractScrollArea* largest = nullptr;
    const auto sizeOf = [](const QWidget* area) { return area->width() * area->height(); };
    for (const auto* area : window.findChildren<QAbstractScrollArea*>()) {
        const bool scrolls = area->isVisible() && area->verticalScrollBar()->maximum() > 0;
        if (scrolls && (!largest || sizeOf(area) > sizeOf(largest)))
            largest = area;
    }
    return largest ? largest->verticalScrollBar() : nullptr;
}

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

Problem selectRows(const QWidget& window, const QString& tableName, int count)
{
    auto* table = window.findChild<QTableView*>(tableName);
    if (!table || !table->isVisible() || table->model()->rowCount() < count)
        return u"the table %1 does not show %2 rows"_s.arg(tableName, QString::number(count));
    const QAbstractItemModel* rows = table->model();
    table->setCurrentIndex(rows->index(0, 0));
    table->selectionModel()->select(QItemSelection(rows->index(0, 0), rows->index(count - 1, 0)),
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    return {};
}

Problem triggerOnRow(const QWidget& window, const QString& tableName, const QString& command)
{
    if (const Problem problem = selectRows(window, tableName))
        return problem;
    for (QAction* action : window.findChild<QTableView*>(tableName)->actions()) {
        if (action->text() == command) {
            action->trigger();
            return {};
        }
    }
    return u"the table %1 has no command \"%2\""_s.arg(tableName, command);
}

void scrollToBegin(const QWidget& window)
{
    if (QScrollBar* bar = mainScrollBar(window))
        bar->setValue(bar->minimum());
}

void scrollToEnd(const QWidget& window)
{
    if (QScrollBar* bar = mainScrollBar(window))
        bar->setValue(bar->maximum());
}

void waitForPainting()
{
    QEventLoop loop;
    QTimer::singleShot(paintingMs, &loop, &QEventLoop::quit);
    loop.exec();
}

void waitUntilStill(QWidget& window)
{
    QElapsedTimer waited;
    QElapsedTimer still;
    waited.start();
    still.start();
    QImage before;
    while (waited.elapsed() < patienceMs && still.elapsed() < stillMs) {
        waitForPainting();
        const QImage now = window.grab().toImage();
        if (now != before)
            still.restart();
        before = now;
    }
}

} // namespace Hands
