#include "support/Hands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Hands {

bool show(QWidget& window)
{
    window.show();
    return QTest::qWaitForWindowActive(&window);
}

QAbstractButton* button(const QWidget& window, const QString& text)
{
    for (auto* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->isEnabled() && button->text().remove(u'&') == text)
            return button;
    }
    return nullptr;
}

void press(const QWidget& window, const QString& text)
{
    if (QAbstractButton* found = button(window, text))
        return found->click();
    // Not the macro: it returns from the helper, and the test would go on as passed.
    QTest::qFail(qUtf8Printable(u"no button "_s + text), __FILE__, __LINE__);
}

bool shows(const QWidget& window, const QString& text)
{
    const auto labels = window.findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(),
        [&text](const QLabel* label) { return label->isVisible() && label->text() == text; });
}

QStringList column(const QAbstractItemView* view, int column, int role)
{
    QStringList texts;
    for (int row = 0; row < view->model()->rowCount(); ++row)
        texts += view->model()->index(row, column).data(role).toString();
    return texts;
}

void clickCell(const QAbstractItemView* view, int row, int column, int part, int parts)
{
    const QRect cell = view->visualRect(view->model()->index(row, column));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
        { cell.left() + cell.width() * (2 * part + 1) / (2 * parts), cell.center().y() });
}

QStringList namesByTab(const QWidget& window, int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        QWidget* field = window.focusWidget();
        names += field->accessibleName().isEmpty()
            ? QAccessible::queryAccessibleInterface(field)->text(QAccessible::Name)
            : field->accessibleName();
        QTest::keyClick(field, Qt::Key_Tab);
    }
    return names;
}

bool dropFiles(QWidget* target, const QStringList& paths)
{
    QMimeData files;
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls += QUrl::fromLocalFile(path);
    files.setUrls(urls);
    const Qt::DropActions actions = Qt::MoveAction | Qt::CopyAction;
    const QPoint place = target->rect().center();
    QDragEnterEvent enter(place, actions, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QDropEvent drop(place, actions, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    return enter.isAccepted() && drop.dropAction() == Qt::CopyAction;
}

std::function<void(QDialog*)> choosePath(const QString& path)
{
    return [path](QDialog* dialog) {
        dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
        dialog->accept();
    };
}

bool showsNotice(const std::function<void()>& work)
{
    bool seen = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&seen] {
        const QWidget* notice = QApplication::activeModalWidget();
        seen = seen || (notice && notice->objectName() == u"BusyNotice");
    });
    look.start(0);
    work();
    return seen;
}

} // namespace Hands
