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
    if (m_action != Action::Set)
        m_current = fields->addRow(rows, u"当前密码"_s, u"currentPassword"_s);
    if (m_action != Action::TurnOff) {
        m_new = fields->addRow(rows, u"新密码"_s, u"newPassword"_s);
        m_new->setPlaceholderText(u"至少 6 个字符"_s);
        m_repeated = fields->addRow(rows, u"再次输入"_s, u"repeatedPassword"_s);
    }
    fields->addRevealRow(rows);
    body()->addLayout(rows);
    body()->addStretch();

    addRejectButton(u"取消"_s);
    QPushButton* save = addPrimaryButton(wordingOf(m_action).button.toString(),
        m_action == Action::TurnOff ? ButtonRole::Danger : ButtonRole::Primary);
    connect(save, &QPushButton::clicked, this, &PasswordDialog::onSave);
    (m_current ? m_current : m_new)->setFocus();
}

bool PasswordDialog::hasUnsavedInput() const
{
    return m_new && !m_new->text().isEmpty();
}

void PasswordDialog::onSave()
{
    // The new password first: it costs nothing to check.
    if (m_new) {
        if (const auto problem = Password::firstProblem(m_new->text(), m_repeated->text())) {
            warn(*problem);
            return;
        }
    }
    if (m_current && !currentPasswordFits()) {
        warn({ Password::Field::Current, u"密码错误"_s, u"当前密码不正确。"_s });
        return;
    }
    if (store())
        accept();
}

void PasswordDialog::warn(const FormProblem<Password::Field>& problem)
{
    MessageBox::warn(this, problem.title, problem.text);
    QLineEdit* field = problem.field == Password::Field::Current ? m_current
        : problem.field == Password::Field::New                  ? m_new
                                                                 : m_repeated;
    field->setFocus();
    field->selectAll();
}

bool PasswordDialog::currentPasswordFits() const
{
    const CompanyProfile profile = ProfileDao().load();
    return Password::verify(
        m_current->text(), { .hash = profile.passwordHash, .salt = profile.passwordSalt });
}

bool PasswordDialog::store()
{
    ProfileDao profiles;
    Password::Secret secret;
    if (m_new) {
        const std::optional<Password::Secret> made = Password::makeSecret(m_new->text());
        if (!made) {
            MessageBox::warn(
                this, u"保存失败"_s, u"无法生成密码信息，可能是内存不足，请稍后重试。"_s);
            return false;
        }
        secret = *made;
    }
    if (profiles.setPassword(m_new != nullptr, secret.hash, secret.salt))
        return true;
    MessageBox::warn(this, u"保存失败"_s, u"启动密码无法保存：%1"_s.arg(profiles.lastError()));
    return false;
}
