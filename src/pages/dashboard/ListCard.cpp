#include "pages/dashboard/ListCard.h"

#include "widgets/ButtonRole.h"
#include "widgets/Card.h"
#include "widgets/TextRole.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

ListCard::ListCard(const QString& title, QWidget* parent)
    : QWidget(parent)
    , m_card(new Card(title, this))
    , m_rows(new QVBoxLayout)
    , m_notice(new QLabel(m_card))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_card);
    m_rows->setSpacing(2);
    m_notice->setTextFormat(Qt::PlainText);
    m_notice->setWordWrap(true);
    m_notice->setContentsMargins(8, 4, 8, 4);
    setTextRole(m_notice, TextRole::Hint);
    m_notice->hide();
    m_card->body()->addLayout(m_rows);
    m_card->body()->addWidget(m_notice);
    m_card->body()->addStretch();
}

void ListCard::addLink(const QString& text, const QString& accessibleName)
{
    QPushButton* link = makeButton(text, ButtonRole::Link, m_card);
    link->setAccessibleName(accessibleName);
    m_card->addHeadWidget(link);
    connect(link, &QPushButton::clicked, this, &ListCard::linkTriggered);
}

void ListCard::setRows(const QList<RowButton::Content>& rows)
{
    clearRows();
    m_notice->hide();
    for (int i = 0; i < rows.size(); ++i) {
        auto* row = new RowButton(rows.at(i), m_card);
        m_rows->addWidget(row);
        row->show();
        connect(row, &RowButton::clicked, this, [this, i] { emit rowTriggered(i); });
    }
}

void ListCard::addNotice(const QString& text)
{
    m_notice->setText(text);
    m_notice->show();
}

void ListCard::clearRows()
{
    while (QLayoutItem* item = m_rows->takeAt(0)) {
        // Later, because the row may be the one that was just pressed.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
}
