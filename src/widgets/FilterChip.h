#pragma once

#include <QAbstractButton>

/// A restriction that is in force, as a small label that a click takes away: "项目：山岚官网 ✕".
/// Long texts are shortened in the middle and whole in the tool tip. Delete works like a click.
class FilterChip final : public QAbstractButton {
    Q_OBJECT

public:
    explicit FilterChip(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
