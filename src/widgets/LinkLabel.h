#pragma once

#include <QLabel>

/// A line with links that shows at once which of them the keyboard is on: a plain label takes the
/// focus first and its first link only with the next Tab.
class LinkLabel final : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

protected:
    void focusInEvent(QFocusEvent* event) override;
};
