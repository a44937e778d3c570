#pragma once

#include <QFrame>

class QHBoxLayout;
class QLabel;
class QVBoxLayout;

/// A titled surface that groups what belongs together on a page or in a dialog.
class Card : public QFrame {
    Q_OBJECT

public:
    /// Without a title the head stays away until something is put into it.
    explicit Card(const QString& title = {}, QWidget* parent = nullptr);

    QString title() const;
    void setTitle(const QString& title);

    /// One explaining line below the title; empty takes it away.
    void setHint(const QString& hint);

    /// Puts a widget at the right end of the head.
    void addHeadWidget(QWidget* widget);

    /// Where the content goes.
    QVBoxLayout* body() const { return m_body; }

private:
    void updateHead();

    QWidget* m_head;
    QHBoxLayout* m_headRow;
    QLabel* m_title;
    QLabel* m_hint;
    QVBoxLayout* m_body;
};
