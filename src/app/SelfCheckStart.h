#pragma once

#include <QObject>
#include <QTimer>

class MainWindow;

/// Runs the self-check once, shortly after a window has been painted for the first time: one suite
/// after the other, between what the user does. Waits while a dialog is open: what runs behind it
/// may have the database in its hands.
class SelfCheckStart final : public QObject {
    Q_OBJECT

public:
    /// Lives as long as the window.
    explicit SelfCheckStart(MainWindow* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void advance();
    void onFinished();

    MainWindow* m_window;
    QTimer m_timer;
};
