#include "dialogs/LoginDialog.h"

#include "dialogs/PasswordFields.h"
#include "theme/Logo.h"
#include "widgets/ButtonRole.h"
#include "widgets/FormRows.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

LoginDialog::LoginDialog(const Password::Secret& secret, const WaitRule& waitAfter, QWidget* parent)
    : QDialog(parent)
    , m_secret(secret)
    , m_waitAfter(waitAfter)
    , m_waitUntil(0)
{
    setObjectName(u"LoginDialog"_s);
    setWindowTitle(u"启动密码"_s);
    buildForm();
    setFixedWidth(400);
    m_tick.setInterval(200);
    connect(&m_tick, &QTimer::timeout, this, &LoginDialog::updateWait);
}

void LoginDialog::buildForm()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->setSpacing(12);
    auto* logo = new QLabel(this);
    logo->setPixmap(Logo::pixmap(56, devicePixelRatioF()));
    logo->setAlignment(Qt::AlignHCenter);
    layout->addWidget(logo);
    auto* title = new QLabel(u"请输入启动密码"_s, this);
    setTextRole(title, TextRole::PageTitle);
    title->setAlignment(Qt::AlignHCenter);
    layout->addWidget(title);

    auto* rows = new FormRows;
    auto* fields = new PasswordFields(this);
    m_password = fields->addRow(rows, u"启动密码"_s, u"startPassword"_s);
    fields->addRevealRow(rows);
    layout->addLayout(rows);

    m_message = new QLabel(this);
    m_message->setObjectName(u"loginMessage"_s);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setMinimumHeight(m_message->fontMetrics().height());
    setTextRole(m_message, TextRole::Danger);
    layout->addWidget(m_message);

    layout->addLayout(buildButtons());
    m_password->setFocus();
}

QLayout* LoginDialog::buildButtons()
{
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    QPushButton* leave = makeButton(u"退出"_s, ButtonRole::Default, this);
    m_enter = makeButton(u"进入"_s, ButtonRole::Primary, this);
    m_enter->setDefault(true);
    buttons->addStretch();
    buttons->addWidget(leave);
    buttons->addWidget(m_enter);
    connect(m_enter, &QPushButton::clicked, this, &LoginDialog::onEnter);
    connect(leave, &QPushButton::clicked, this, &QDialog::reject);
    return buttons;
}

void LoginDialog::onEnter()
{
    if (!m_waitUntil.hasExpired())
        return;
    switch (Password::verify(m_password->text(), m_secret)) {
    case Password::Check::Fits:
        accept();
        break;
    case Password::Check::Wrong:
        refuse();
        break;
    case Password::Check::CouldNotCheck:
        setTextRole(m_message, TextRole::Danger);
        m_message->setText(u"内存不足，无法核对密码。请关闭其他程序后再试。"_s);
        break;
    }
}

void LoginDialog::refuse()
{
    ++m_failures;
    m_password->clear();
    m_password->setFocus();
    setTextRole(m_message, TextRole::Danger);
    m_message->setText(u"密码不正确，请重新输入。"_s);
    if (const int seconds = m_waitAfter(m_failures); seconds > 0) {
        m_waitUntil.setRemainingTime(std::chrono::seconds(seconds));
        m_tick.start();
        updateWait();
    }
}

void LoginDialog::updateWait()
{
    const bool waiting = !m_waitUntil.hasExpired();
    m_enter->setEnabled(!waiting);
    if (waiting) {
        const qint64 seconds = (m_waitUntil.remainingTime() + 999) / 1000;
        m_message->setText(u"密码已连续输错 %1 次，请 %2 秒后再试。"_s.arg(
            QString::number(m_failures), QString::number(seconds)));
        return;
    }
    m_tick.stop();
    setTextRole(m_message, TextRole::Hint);
    m_message->setText(u"现在可以再次输入密码。"_s);
}
