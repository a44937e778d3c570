#pragma once

#include <QTimer>
#include <QWidget>

/// The first thing that shows, for at most about a second. A click, a key or closing it shortens
/// the wait.
class SplashScreen final : public QWidget {
    Q_OBJECT

public:
    static constexpr int shownMs = 900;

    explicit SplashScreen(QWidget* parent = nullptr);

    /// Shows and paints the screen at once and starts its time.
    void start();

signals:
    /// Exactly once, however the screen ends.
    void finished();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void finish();

    QTimer m_timer;
    bool m_finished = false;
};
