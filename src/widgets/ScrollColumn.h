#pragma once

#include <QScrollArea>

class QVBoxLayout;

/// The body of a page that is longer than its window: cards below each other, as high as their
/// texts need at the present width, and scrolled as a whole.
class ScrollColumn final : public QScrollArea {
    Q_OBJECT

public:
    explicit ScrollColumn(QWidget* parent = nullptr);

    /// Where the content goes.
    QVBoxLayout* column() const { return m_column; }

private:
    QVBoxLayout* m_column;
};
