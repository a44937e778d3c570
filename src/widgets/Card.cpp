#include "widgets/Card.h"

#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QLabel* makeLabel(TextRole role, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    setTextRole(label, role);
    return label;
}

} // namespace

Card::Card(const QString& title, QWidget* parent)
    : QFrame(parent)
    , m_head(new QWidget(this))
    , m_headRow(new QHBoxLayout(m_head))
    , m_title(makeLabel(TextRole::CardTitle, m_head))
    , m_hint(makeLabel(TextRole::Hint, this))
    , m_body(new QVBoxLayout)
{
    setObjectName(u"Card"_s);
    m_headRow->setContentsMargins(0, 0, 0, 0);
    m_headRow->setSpacing(8);
    m_headRow->addWidget(m_title, 1);
    m_hint->setWordWrap(true);
    m_body->setSpacing(8);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(8);
    column->addWidget(m_head);
    column->addWidget(m_hint);
    column->addLayout(m_body, 1);
    m_hint->hide();
    m_title->setObjectName(u"CardTitle"_s);
    m_hint->setObjectName(u"CardHint"_s);
    setTitle(title);
}

QString Card::title() const
{
    return m_title->text();
}

void Card::setTitle(const QString& title)
{
    m_title->setText(title);
    setAccessibleName(title);
    updateHead();
}

void Card::setHint(const QString& hint)
{
    m_hint->setText(hint);
    m_hint->setVisible(!hint.isEmpty());
}

void Card::addHeadWidget(QWidget* widget)
{
    m_headRow->addWidget(widget);
    updateHead();
}

void Card::updateHead()
{
    m_head->setVisible(!title().isEmpty() || m_headRow->count() > 1);
}
