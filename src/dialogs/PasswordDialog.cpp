#include "dialogs/PasswordDialog.h"

#include "db/ProfileDao.h"
#include "dialogs/PasswordFields.h"
#include "widgets/Banner.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

struct Wording {
    QStringView title;
    QStringView remark;
    QStringView button;
};

constexpr QStringView guardsOnly = u"启动密码只阻止他人打开本软件，不会加密数据文件。忘记密码后无法"
                                   u"进入软件，也没有找回的办法，请妥善保管。";

// In the order of PasswordDialog::Action.
constexpr auto wordings = std::to_array<Wording>({
    { u"设置启动密码", guardsOnly, u"设置密码" },
    { u"修改启动密码", guardsOnly, u"修改密码" },
    { u"关闭启动密码", u"关闭后，打开软件不再需要密码。", u"关闭密码" },
});

const Wording& wordingOf(PasswordDialog::Action action)
{
    return wordings.at(static_cast<std::size_t>(action));
}

} // namespace

PasswordDialog::PasswordDialog(Action action, QWidget* parent)
    : FormDialog(wordingOf(action).title.toString(), parent)
    , m_action(action)
{
    setObjectName(u"PasswordDialog"_s);
    buildForm();
    resize(480, sizeHint().height());
}

void PasswordDialog::buildForm()
{
    auto* remark = new Banner(BannerKind::Info, this);
    remark->setText(wordingOf(m_action).remark.toString());
    body()->addWidget(remark);

    auto* rows = new FormRows;
    auto* fields = new PasswordFields(this);
    const auto add = [&](Field field, const QString& label, const QString& name) {
        m_fields.insert(field, fields->addRow(rows, label, name));
    };
    if (m_action != Action::Set)
        add(Field::Current, u"当前密码"_s, u"currentPassword"_s);
    if (m_action != Action::TurnOff) {
        add(Field::New, u"新密码"_s, u"newPassword"_s);
        add(Field::Repeated, u"再次输入"_s, u"repeatedPassword"_s);
        m_fields.value(Field::New)->setPlaceholderText(u"至少 6 个字符"_s);
    }
    fields->addRevealRow(rows);
    body()->addLayout(rows);
    body()->addStretch();

    addRejectButton(u"取消"_s);
    QPushButton* save = addPrimaryButton(wordingOf(m_action).button.toString(),
        m_action == Action::TurnOff ? ButtonRole::Danger : ButtonRole::Primary);
    connect(save, &QPushButton::clicked, this, &PasswordDialog::onSave);
    m_fields.first()->setFocus();
}

bool PasswordDialog::hasUnsavedInput() const
{
    const QLineEdit* password = m_fields.value(Field::New);
    return password && !password->text().isEmpty();
}

void PasswordDialog::onSave()
{
    // The new password first: it costs nothing to check.
    if (m_action != Action::TurnOff) {
        const auto problem = Password::firstProblem(
            m_fields.value(Field::New)->text(), m_fields.value(Field::Repeated)->text());
        if (problem) {
            warn(*problem);
            return;
        }
    }
    if (ownerIsConfirmed() && store())
        accept();
}

void PasswordDialog::warn(const FormProblem<Password::Field>& problem)
{
    MessageBox::warn(this, problem.title, problem.text);
    if (QLineEdit* field = m_fields.value(problem.field)) {
        field->setFocus();
        field->selectAll();
    }
}

bool PasswordDialog::ownerIsConfirmed()
{
    ProfileDao profiles;
    const std::optional<CompanyProfile> profile = profiles.find();
    if (!profile) {
        MessageBox::warn(this, u"读取失败"_s, u"公司档案无法读取：%1"_s.arg(profiles.lastError()));
        return false;
    }
    if (m_action == Action::Set) {
        if (!profile->passwordEnabled)
            return true;
        MessageBox::warn(this, u"无法设置"_s, u"启动密码已经设置过，请使用“修改密码”。"_s);
        return false;
    }
    switch (Password::verify(m_fields.value(Field::Current)->text(),
        { .hash = profile->passwordHash, .salt = profile->passwordSalt })) {
    case Password::Check::Fits:
        return true;
    case Password::Check::Wrong:
        warn({ Field::Current, u"密码错误"_s, u"当前密码不正确。"_s });
        break;
    case Password::Check::CouldNotCheck:
        MessageBox::warn(this, u"无法核对"_s, u"内存不足，无法核对密码。请关闭其他程序后再试。"_s);
        break;
    }
    return false;
}

bool PasswordDialog::store()
{
    ProfileDao profiles;
    Password::Secret secret;
    const bool enabled = m_action != Action::TurnOff;
    if (enabled) {
        const std::optional<Password::Secret> made
            = Password::makeSecret(m_fields.value(Field::New)->text());
        if (!made) {
            MessageBox::warn(
                this, u"保存失败"_s, u"无法生成密码信息，可能是内存不足，请稍后重试。"_s);
            return false;
        }
        secret = *made;
    }
    if (profiles.setPassword(enabled, secret.hash, secret.salt))
        return true;
    MessageBox::warn(this, u"保存失败"_s, u"启动密码无法保存：%1"_s.arg(profiles.lastError()));
    return false;
}
