#include "pages/settings/PasswordCard.h"

#include "widgets/ButtonRole.h"
#include "widgets/Toast.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

PasswordCard::PasswordCard(QWidget* parent)
    : SettingsCard(u"启动密码"_s, parent)
    , m_state(makeText())
{
    setHint(u"密码只阻止他人打开本软件，不会加密数据文件。"_s);
    m_state->setObjectName(u"passwordState"_s);
    body()->addWidget(m_state);

    using Action = PasswordDialog::Action;
    struct Choice {
        Action action;
        QString text;
        QString done;
    };
    QHBoxLayout* line = addButtonLine();
    for (const Choice& choice : { Choice { Action::Set, u"设置密码"_s, u"启动密码已设置"_s },
             Choice { Action::Change, u"修改密码"_s, u"启动密码已修改"_s },
             Choice { Action::TurnOff, u"关闭密码"_s, u"启动密码已关闭"_s } }) {
        QPushButton* button = makeButton(choice.text, ButtonRole::Default, this);
        m_buttons.insert(choice.action, button);
        line->addWidget(button);
        connect(button, &QPushButton::clicked, this,
            [this, choice] { onAction(choice.action, choice.done); });
    }
    line->addStretch();
}

void PasswordCard::showProfile(const CompanyProfile& profile)
{
    const bool enabled = profile.passwordEnabled;
    m_state->setText(
        enabled ? u"已开启：打开软件时需要输入密码。"_s : u"未开启：任何人都可以打开本软件。"_s);
    using Action = PasswordDialog::Action;
    m_buttons.value(Action::Set)->setVisible(!enabled);
    m_buttons.value(Action::Change)->setVisible(enabled);
    m_buttons.value(Action::TurnOff)->setVisible(enabled);
}

void PasswordCard::onAction(PasswordDialog::Action action, const QString& done)
{
    PasswordDialog dialog(action, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    emit profileChanged();
    Toast::show(window(), done);
}
