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

    /// A line and a link below the button, for a reason that may apply besides; empty texts take
    /// them away.
    void setNote(const QString& note, const QString& action);

signals:
    void actionTriggered();
    void noteTriggered();

private:
    QLabel* m_title;
    QLabel* m_text;
    QPushButton* m_action;
    QLabel* m_note;
    QPushButton* m_noteAction;
};
