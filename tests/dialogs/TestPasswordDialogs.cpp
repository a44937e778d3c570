#include "db/ProfileDao.h"
#include "dialogs/LoginDialog.h"
#include "dialogs/PasswordDialog.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QString& word()
{
    static const QString password = u"山岚2025"_s;
    return password;
}

// Deriving a secret takes a noticeable time, so one serves all tests.
const Password::Secret& secret()
{
    static const Password::Secret made = Password::makeSecret(word()).value();
    return made;
}

void enter(LoginDialog& dialog, const QString& password)
{
    dialog.findChild<QLineEdit*>(u"startPassword"_s)->setText(password);
    Hands::press(dialog, u"进入"_s);
}

QString messageOf(const LoginDialog& dialog)
{
    return dialog.findChild<QLabel*>(u"loginMessage"_s)->text();
}

bool storePassword()
{
    return ProfileDao().setPassword(true, secret().hash, secret().salt);
}

void fill(const PasswordDialog& dialog, const QString& name, const QString& text)
{
    if (auto* field = dialog.findChild<QLineEdit*>(name))
        field->setText(text);
}

// Fills the fields that the dialog has and presses its primary button.
void submit(PasswordDialog& dialog, const QString& current, const QString& password,
    const QString& repeated)
{
    dialog.show();
    fill(dialog, u"currentPassword"_s, current);
    fill(dialog, u"newPassword"_s, password);
    fill(dialog, u"repeatedPassword"_s, repeated);
    for (auto* button : dialog.findChildren<QPushButton*>()) {
        if (button->isDefault())
            button->click();
    }
}

bool isAccepted(const QDialog& dialog)
{
    return !dialog.isVisible() && dialog.result() == QDialog::Accepted;
}

bool opensWith(const QString& password)
{
    const CompanyProfile profile = ProfileDao().load();
    return profile.passwordEnabled
        && Password::verify(
               password, { .hash = profile.passwordHash, .salt = profile.passwordSalt })
        == Password::Check::Fits;
}

} // namespace

class TestPasswordDialogs final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void onlyTheRightPasswordOpens()
    {
        LoginDialog dialog(secret());
        dialog.show();
        enter(dialog, u"错误的密码"_s);
        QVERIFY(dialog.isVisible());
        QCOMPARE(messageOf(dialog), u"密码不正确，请重新输入。"_s);
        QVERIFY(dialog.findChild<QLineEdit*>(u"startPassword"_s)->text().isEmpty());
        enter(dialog, word());
        QVERIFY(isAccepted(dialog));

        LoginDialog broken({ u"unknown$form"_s, u"00"_s });
        broken.show();
        enter(broken, QString());
        QVERIFY2(!isAccepted(broken), "a secret of unknown form lets nobody in");
    }

    void triesHaveToWaitAfterFiveFailures()
    {
        LoginDialog dialog(secret(), [](int failures) { return failures < 2 ? 0 : 1; });
        dialog.show();
        enter(dialog, u"一"_s);
        QVERIFY(ModalAnswerer::buttonOf(&dialog, u"进入"_s));
        enter(dialog, u"二"_s);
        QCOMPARE(messageOf(dialog), u"密码已连续输错 2 次，请 1 秒后再试。"_s);
        QVERIFY2(!ModalAnswerer::buttonOf(&dialog, u"进入"_s), "the button is disabled");
        auto* field = dialog.findChild<QLineEdit*>(u"startPassword"_s);
        field->setText(word());
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY2(dialog.isVisible(), "Enter is no way around");
        QTRY_VERIFY(ModalAnswerer::buttonOf(&dialog, u"进入"_s));
        QCOMPARE(messageOf(dialog), u"现在可以再次输入密码。"_s);
    }

    void setsChangesAndTurnsOff()
    {
        PasswordDialog set(PasswordDialog::Action::Set);
        submit(set, {}, u"第一个密码"_s + word(), u"第一个密码"_s + word());
        QVERIFY(isAccepted(set));
        QVERIFY(opensWith(u"第一个密码"_s + word()));

        PasswordDialog change(PasswordDialog::Action::Change);
        submit(change, u"第一个密码"_s + word(), word(), word());
        QVERIFY(isAccepted(change));
        QVERIFY(opensWith(word()));

        PasswordDialog off(PasswordDialog::Action::TurnOff);
        submit(off, word(), {}, {});
        QVERIFY(isAccepted(off));
        const CompanyProfile profile = ProfileDao().load();
        QVERIFY(!profile.passwordEnabled);
        QVERIFY(profile.passwordHash.isEmpty() && profile.passwordSalt.isEmpty());
    }

    void wrongInputKeepsTheDialogAndThePassword_data()
    {
        using Action = PasswordDialog::Action;
        addColumns<Action, QString, QString, QString, QString>(
            "action", "current", "password", "repeated", "text");
        addCase("change: wrong current password", Action::Change, u"错误"_s, u"新密码123"_s,
            u"新密码123"_s, u"当前密码不正确。"_s);
        addCase("change: too short", Action::Change, word(), u"12345"_s, u"12345"_s,
            u"密码至少需要 6 个字符。"_s);
        addCase("change: repeated wrongly", Action::Change, word(), u"新密码123"_s, u"新密码124"_s,
            u"两次输入的密码不一致。"_s);
        addCase("set over another", Action::Set, QString(), u"另一个新密码"_s, u"另一个新密码"_s,
            u"启动密码已经设置过"_s);
        addCase("turn off: wrong current password", Action::TurnOff, QString(), QString(),
            QString(), u"当前密码不正确。"_s);
    }

    void wrongInputKeepsTheDialogAndThePassword()
    {
        QFETCH(PasswordDialog::Action, action);
        QFETCH(QString, current);
        QFETCH(QString, password);
        QFETCH(QString, repeated);
        QFETCH(QString, text);
        QVERIFY(storePassword());
        ModalAnswerer answers(u"确定"_s);
        PasswordDialog dialog(action);
        submit(dialog, current, password, repeated);
        QVERIFY(dialog.isVisible());
        QVERIFY(answers.seen().at(0).text.contains(text));
        QVERIFY(opensWith(word()));
    }

    void aFailedSaveKeepsTheInput()
    {
        QVERIFY(TestDatabase::refuseUpdates(u"company_profile"_s));
        ModalAnswerer answers(u"确定"_s);
        PasswordDialog dialog(PasswordDialog::Action::Set);
        submit(dialog, {}, word(), word());
        QVERIFY(dialog.isVisible());
        QCOMPARE(answers.seen().at(0).title, u"保存失败"_s);
        QCOMPARE(dialog.findChild<QLineEdit*>(u"newPassword"_s)->text(), word());
        QVERIFY(!ProfileDao().load().passwordEnabled);
    }

    void passwordsAreHiddenUntilAskedFor()
    {
        PasswordDialog dialog(PasswordDialog::Action::Change);
        const auto modes = [&dialog] {
            QSet<QLineEdit::EchoMode> used;
            for (const auto* field : dialog.findChildren<QLineEdit*>())
                used.insert(field->echoMode());
            return used;
        };
        QCOMPARE(modes(), QSet<QLineEdit::EchoMode> { QLineEdit::Password });
        dialog.findChild<QCheckBox*>()->toggle();
        QCOMPARE(modes(), QSet<QLineEdit::EchoMode> { QLineEdit::Normal });
    }
};

static const RegisteredTest<TestPasswordDialogs> registered;

#include "TestPasswordDialogs.moc"
