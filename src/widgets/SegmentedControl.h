#pragma once

#include <QFrame>

class QButtonGroup;
class QHBoxLayout;

/// A few views of one page beside each other, of which one is chosen. The arrow keys move between
/// them.
class SegmentedControl final : public QFrame {
    Q_OBJECT

public:
    explicit SegmentedControl(const QString& accessibleName, QWidget* parent = nullptr);

    /// The first segment is chosen from the start. Returns its index.
    int addSegment(const QString& text);

    int currentIndex() const;
    void setCurrentIndex(int index);

signals:
    /// However the choice changed.
    void currentChanged(int index);

private:
    QButtonGroup* m_group;
    QHBoxLayout* m_row;
};
