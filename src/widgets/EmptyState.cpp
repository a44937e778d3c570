#include "widgets/EmptyState.h"

#include "widgets/ButtonRole.h"
#include "widgets/IconLabel.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 48;
constexpr int textWidth = 400;

QLabel* makeLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

} // namespace

EmptyState::EmptyState(
    const QString& iconName, const QString& title, const QString& text, QWidget* parent)
    : QWidget(parent)
    , m_title(makeLabel(this))
    , m_text(makeLabel(this))
    , m_action(makeButton({}, ButtonRole::Primary, this))
{
    setObjectName(u"EmptyState"_s);
    setTextRole(m_title, TextRole::CardTitle);
    setTextRole(m_text, TextRole::Hint);
    m_action->setObjectName(u"EmptyStateAction"_s);

    // A column of fixed width: the layout asks a wrapping label for its height by the width that
    // it really gets.
    auto* content = new QWidget(this);
    content->setFixedWidth(textWidth);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 24, 0, 24);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(
        new IconLabel(iconName, Token::TextTertiary, iconSize, this), 0, Qt::AlignHCenter);
    column->addSpacing(16);
    column->addWidget(m_title);
    column->addSpacing(8);
    column->addWidget(m_text);
    column->addSpacing(16);
    column->addWidget(m_action, 0, Qt::AlignHCenter);
    column->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addStretch();
    layout->addWidget(content);
    layout->addStretch();

    setTexts(title, text);
    m_action->hide();
    connect(m_action, &QPushButton::clicked, this, &EmptyState::actionTriggered);
}

void EmptyState::setTexts(const QString& title, const QString& text)
{
    m_title->setText(title);
    m_text->setText(text);
}

void EmptyState::setAction(const QString& text)
{
    m_action->setText(text);
    m_action->setVisible(!text.isEmpty());
}
