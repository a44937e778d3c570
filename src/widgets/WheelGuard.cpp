#include "widgets/WheelGuard.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QScrollBar>

namespace {

bool changesByWheel(const QWidget* widget)
{
    return qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget)
        || (qobject_cast<const QAbstractSlider*>(widget)
            && !qobject_cast<const QScrollBar*>(widget));
}

// Before the wheel reaches a field Qt would give it the keyboard, and the guard would be blind.
void refuseFocusByWheel(QWidget* field)
{
    if ((field->focusPolicy() & Qt::WheelFocus) == Qt::WheelFocus)
        field->setFocusPolicy(Qt::StrongFocus);
}

} // namespace

void WheelGuard::protect(QWidget* field)
{
    refuseFocusByWheel(field);
    field->installEventFilter(new WheelGuard(field));
}

void WheelGuard::protectApplication()
{
    qApp->installEventFilter(new WheelGuard(qApp));
}

bool WheelGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Wheel && event->type() != QEvent::Polish)
        return false;
    auto* field = qobject_cast<QWidget*>(watched);
    if (!field || !changesByWheel(field))
        return false;
    if (event->type() == QEvent::Polish) {
        refuseFocusByWheel(field);
        return false;
    }
    if (field->hasFocus())
        return false;
    // Not accepted, so that the scroll area behind the field gets it.
    event->ignore();
    return true;
}
