#pragma once

#include <QAbstractButton>

/// An on/off setting that takes effect at once. `text()` is shown beside it and names it; the
/// state is told as 开 or 关.
class Switch final : public QAbstractButton {
    Q_OBJECT

public:
    explicit Switch(const QString& text = {}, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintTrack(QPainter& painter, const QRectF& track) const;
    void updateAccessibleState();
};
