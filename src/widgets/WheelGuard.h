#pragma once

#include <QObject>

class QWidget;

/// Keeps the wheel from changing a field that the user is only scrolling past: combo boxes, spin
/// boxes and sliders answer it while they have the keyboard, otherwise the page scrolls.
class WheelGuard final : public QObject {
    Q_OBJECT

public:
    /// Guards one field.
    static void protect(QWidget* field);

    /// Guards every such field of the program, those to come included. Called once at start.
    static void protectApplication();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using QObject::QObject;
};
