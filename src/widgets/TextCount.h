#pragma once

#include <QLabel>

/// How much of a text's room is taken, "12 / 64", beside the field that it counts for. Marked as
/// soon as it is too much.
class TextCount final : public QLabel {
    Q_OBJECT

public:
    explicit TextCount(int limit, QWidget* parent = nullptr);

    /// Counts characters without the white space around the text.
    void setCounted(const QString& text);

private:
    const int m_limit;
};
