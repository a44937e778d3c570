#pragma once

#include <QLabel>

/// One line of plain text that gives way when there is no room: shortened in the middle, whole in
/// the tool tip. `text()` is always the whole text.
class ElidedLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};
