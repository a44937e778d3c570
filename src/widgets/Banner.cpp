#include "widgets/Banner.h"

#include "core/TextRules.h"
#include "theme/Icons.h"
#include "widgets/ButtonRole.h"
#include "widgets/IconLabel.h"
#include "widgets/StyleProperty.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 20;

QLabel* makeText(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(u"BannerText"_s);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    // One line is as high as the buttons beside it; several keep clear of the border.
    label->setContentsMargins(0, 6, 0, 6);
    label->setMinimumHeight(32);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

QToolButton* makeClose(QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(u"BannerClose"_s);
    button->setIcon(Icons::icon(u"close"));
    button->setToolTip(u"关闭提示"_s);
    button->setAccessibleName(u"关闭提示"_s);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

} // namespace

Banner::Banner(BannerKind kind, QWidget* parent)
    : QFrame(parent)
    , m_kind(kind)
    , m_icon(new IconLabel(codeOf(kind), textTokenOf(kind), iconSize, this))
    , m_label(makeText(this))
    , m_action(makeButton({}, ButtonRole::Link, this))
    , m_close(makeClose(this))
{
    setObjectName(u"Banner"_s);
    m_action->setObjectName(u"BannerAction"_s);
    m_row = new QHBoxLayout(this);
    m_row->setContentsMargins(12, 4, 8, 4);
    m_row->setSpacing(8);
    m_row->addWidget(m_icon);
    m_row->addWidget(m_label, 1);
    m_row->addWidget(m_action);
    m_row->addWidget(m_close);
    m_action->hide();
    m_close->hide();
    setKind(kind);

    connect(m_action, &QPushButton::clicked, this, &Banner::actionTriggered);
    connect(m_close, &QToolButton::clicked, this, [this] {
        hide();
        emit closed();
    });
}

void Banner::setKind(BannerKind kind)
{
    m_kind = kind;
    m_icon->setIcon(codeOf(kind), textTokenOf(kind));
    setStyleProperty(this, "kind", codeOf(kind));
    setStyleProperty(m_label, "bannerKind", codeOf(kind));
    updateAccessibleName();
}

QString Banner::text() const
{
    return m_label->text();
}

void Banner::setText(const QString& text)
{
    m_label->setText(TextRules::withoutDirectionMarks(text));
    updateAccessibleName();
}

void Banner::setAction(const QString& text)
{
    m_action->setText(text);
    m_action->setVisible(!text.isEmpty());
}

QPushButton* Banner::addButton(const QString& text)
{
    QPushButton* button = makeButton(text, ButtonRole::Link, this);
    m_row->insertWidget(m_row->indexOf(m_close), button);
    setTabOrder(button, m_close);
    return button;
}

void Banner::setClosable(bool closable)
{
    m_close->setVisible(closable);
}

void Banner::updateAccessibleName()
{
    setAccessibleName(u"%1：%2"_s.arg(labelOf(m_kind), text()));
}
