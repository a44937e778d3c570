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
    , m_note(makeLabel(this))
    , m_noteAction(makeButton({}, ButtonRole::Link, this))
{
    setObjectName(u"EmptyState"_s);
    setTextRole(m_title, TextRole::CardTitle);
    setTextRole(m_text, TextRole::Hint);
    m_action->setObjectName(u"EmptyStateAction"_s);
    m_noteAction->setObjectName(u"EmptyStateNoteAction"_s);

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
    column->addSpacing(16);
    column->addWidget(m_note);
    column->addWidget(m_noteAction, 0, Qt::AlignHCenter);
    column->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addStretch();
    layout->addWidget(content);
    layout->addStretch();

    setTexts(title, text);
    setAction({});
    setNote({}, {});
    connect(m_action, &QPushButton::clicked, this, &EmptyState::actionTriggered);
    connect(m_noteAction, &QPushButton::clicked, this, &EmptyState::noteTriggered);
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

void EmptyState::setNote(const QString& note, const QString& action)
{
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
    m_noteAction->setText(action);
    m_noteAction->setVisible(!action.isEmpty());
}
