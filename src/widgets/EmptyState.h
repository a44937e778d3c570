#pragma once

#include <QWidget>

class IconLabel;
class QLabel;
class QPushButton;

/// Stands where a list or table has nothing to show: why it is empty and what can be done.
class EmptyState final : public QWidget {
    Q_OBJECT

public:
    EmptyState(const QString& iconName, const QString& title, const QString& text,
        QWidget* parent = nullptr);

    void setTexts(const QString& title, const QString& text);

    /// The primary button below the text; an empty text takes it away.
    void setAction(const QString& text);

signals:
    void actionTriggered();

private:
    QLabel* m_title;
    QLabel* m_text;
    QPushButton* m_action;
};
