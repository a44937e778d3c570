#pragma once

#include "widgets/BannerKind.h"

#include <QLabel>
#include <QTimer>

/// A short message at the bottom of a window that goes by itself after three seconds, or as long
/// as the pointer rests on it. It never takes the keyboard. At most three stand above each
/// other; the oldest makes room.
class Toast final : public QLabel {
    Q_OBJECT

public:
    static constexpr int shownMs = 3000;
    static constexpr int stackSize = 3;

    static void show(QWidget* window, const QString& text, BannerKind kind = BannerKind::Success);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    Toast(QWidget* window, const QString& text, BannerKind kind);

    void dismiss();

    BannerKind m_kind;
    QTimer m_timer;
};
