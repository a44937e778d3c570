#pragma once

#include "widgets/RowButton.h"

#include <QWidget>

class Card;
class QLabel;
class QPushButton;
class QVBoxLayout;

/// A titled list of rows that lead somewhere, and one line where something is to be said of it.
class ListCard final : public QWidget {
    Q_OBJECT

public:
    explicit ListCard(const QString& title, QWidget* parent = nullptr);

    /// A link at the end of the head.
    void addLink(const QString& text, const QString& accessibleName);

    /// Takes an earlier notice away.
    void setRows(const QList<RowButton::Content>& rows);
    /// One line below the rows.
    void addNotice(const QString& text);

signals:
    void rowTriggered(int row);
    void linkTriggered();

private:
    void clearRows();

    Card* m_card;
    QVBoxLayout* m_rows;
    QLabel* m_notice;
};
