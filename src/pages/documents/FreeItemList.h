#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>

class QLineEdit;
class QPushButton;
class QToolButton;
class QVBoxLayout;

/// Sentences in the user's own words, as many as wanted and in their order.
class FreeItemList final : public QWidget {
    Q_OBJECT

public:
    /// `itemName` names a line, followed by its number.
    explicit FreeItemList(const QString& itemName, QWidget* parent = nullptr);

    /// As typed, blank lines included.
    QStringList texts() const;
    void clear();

signals:
    void changed();

private:
    struct Line {
        QWidget* row = nullptr;
        QLineEdit* edit = nullptr;
        QToolButton* up = nullptr;
        QToolButton* remove = nullptr;
    };

    QToolButton* makeTool(const QString& icon, QWidget* row);
    void addLine();
    void removeLine(QWidget* row);
    void moveUp(QWidget* row);
    qsizetype indexOf(QWidget* row) const;
    /// Numbers and order follow the place of a line.
    void renumber();

    const QString m_itemName;
    QList<Line> m_lines;
    QVBoxLayout* m_column;
    QPushButton* m_add;
};
