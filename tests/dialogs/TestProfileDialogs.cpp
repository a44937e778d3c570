#include "db/ProfileDao.h"
#include "dialogs/DisclaimerDialog.h"
#include "dialogs/ProfileDialog.h"
#include "dialogs/ProfileWizardDialog.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/InputMethod.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "widgets/AmountField.h"

#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using Hands::press;

namespace {

QLineEdit* edit(const QWidget& dialog, const QString& name)
{
    return dialog.findChild<QLineEdit*>(name);
}

} // namespace

class TestProfileDialogs final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void storesEveryFieldAsTabReachesThem()
    {
        const QStringList names { u"公司名称"_s, u"统一社会信用代码"_s, u"股东姓名"_s,
            u"开户银行"_s, u"对公账号"_s, u"公司地址"_s, u"联系电话"_s };
        const QStringList typed { u" 山岚 & <b>%1</b> 设计 "_s, u"91350100m000100y43"_s, u"林岚"_s,
            u"招商银行"_s, u"5719 0088"_s, u"文三路 90 号"_s, u"0571-8888"_s };
        ProfileDialog dialog(ProfileDao().load());
        QVERIFY(Hands::show(dialog));
        for (qsizetype i = 0; i < names.size(); ++i) {
            InputMethod::commit(typed.at(i));
            QCOMPARE(Hands::namesByTab(dialog, 1), QStringList { names.at(i) });
        }
        press(dialog, u"保存"_s);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));

        const CompanyProfile stored = ProfileDao().load();
        const QStringList texts { stored.companyName, stored.creditCode, stored.shareholderName,
            stored.bankName, stored.bankAccount, stored.address, stored.phone };
        QStringList expected = typed;
        expected[0] = u"山岚 & <b>%1</b> 设计"_s;
        expected[1] = u"91350100M000100Y43"_s;
        QCOMPARE(texts, expected);
        QCOMPARE(stored.largeAmountFen, 5'000'000);
    }

    void missingNamesAreRefused_data()
    {
        addColumns<QString, QString>("emptied", "text");
        addCase("company", u"companyName"_s, u"请填写公司名称。"_s);
        addCase("owner", u"shareholderName"_s, u"请填写股东姓名。"_s);
    }

    void missingNamesAreRefused()
    {
        QFETCH(QString, emptied);
        QFETCH(QString, text);
        QVERIFY(TestLedger::storeCompany());
        const CompanyProfile before = ProfileDao().load();
        ModalAnswerer answers(u"确定"_s);
        ProfileDialog dialog(ProfileDao().load());
        QVERIFY(Hands::show(dialog));
        edit(dialog, emptied)->setText(u"  "_s);
        press(dialog, u"保存"_s);
        QVERIFY(dialog.isVisible());
        QCOMPARE(answers.seen().at(0).title, u"信息不完整"_s);
        QVERIFY(answers.seen().at(0).text.contains(text));
        QTRY_COMPARE(dialog.focusWidget()->objectName(), emptied);
        QVERIFY(ProfileDao().load() == before);
    }

    void aTextThatIsTooLongIsRefusedAndCanBeShortened()
    {
        QVERIFY(TestLedger::storeCompany());
        CompanyProfile profile = ProfileDao().load();
        profile.shareholderName = QString(10'000, u'林');
        QVERIFY2(ProfileDao().save(profile), "as an older program did");
        ProfileDialog dialog(ProfileDao().load());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(edit(dialog, u"shareholderName"_s)->text(), profile.shareholderName);
        ModalAnswerer answers(u"确定"_s);
        press(dialog, u"保存"_s);
        QCOMPARE(answers.seen().at(0).text, u"股东姓名最多 100 个字。"_s);
        QTRY_COMPARE(dialog.focusWidget()->objectName(), u"shareholderName"_s);
        QCOMPARE(ProfileDao().load().shareholderName, profile.shareholderName);
        edit(dialog, u"shareholderName"_s)->setText(u"林岚"_s);
        press(dialog, u"保存"_s);
        QCOMPARE(ProfileDao().load().shareholderName, u"林岚"_s);
    }

    void aWrongCreditCodeWarnsAndIsStored()
    {
        QVERIFY(TestLedger::storeCompany());
        ProfileDialog dialog(ProfileDao().load());
        dialog.show();
        const auto* remark = dialog.findChild<QLabel*>(u"creditCodeRemark"_s);
        QVERIFY(!remark->isVisible());
        edit(dialog, u"creditCode"_s)->setText(u"91350100m000100y44"_s);
        QCOMPARE(edit(dialog, u"creditCode"_s)->text(), u"91350100M000100Y44"_s);
        QVERIFY(remark->isVisible());
        edit(dialog, u"creditCode"_s)->setText(u"91350100m000100y43"_s);
        QVERIFY(!remark->isVisible());
        edit(dialog, u"creditCode"_s)->setText(u"12345"_s);
        press(dialog, u"保存"_s);
        QCOMPARE(ProfileDao().load().creditCode, u"12345"_s);
    }

    void aFailedSaveKeepsTheInput()
    {
        QVERIFY(TestLedger::storeCompany());
        QVERIFY(TestDatabase::refuseUpdates(u"company_profile"_s));
        ModalAnswerer answers(u"确定"_s);
        ProfileDialog dialog(ProfileDao().load());
        dialog.show();
        edit(dialog, u"phone"_s)->setText(u"13800000000"_s);
        press(dialog, u"保存"_s);
        QVERIFY(dialog.isVisible());
        QCOMPARE(answers.seen().at(0).title, u"保存失败"_s);
        QVERIFY(answers.seen().at(0).text.contains(u"refused"_s));
        QCOMPARE(edit(dialog, u"phone"_s)->text(), u"13800000000"_s);
    }

    void changedInputIsThrownAwayOnlyAfterAQuestion()
    {
        QVERIFY(TestLedger::storeCompany());
        ProfileDialog dialog(ProfileDao().load());
        dialog.show();
        edit(dialog, u"phone"_s)->setText(u"13800000000"_s);
        {
            ModalAnswerer answers(u"继续填写"_s);
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QVERIFY(dialog.isVisible());
        }
        {
            ModalAnswerer answers(u"放弃修改"_s);
            dialog.close();
            QVERIFY(!dialog.isVisible());
        }
        QCOMPARE(ProfileDao().load().phone, QString());

        ProfileDialog untouched(ProfileDao().load());
        untouched.show();
        QTest::keyClick(&untouched, Qt::Key_Escape);
        QVERIFY2(!untouched.isVisible(), "without changes nothing is asked");
    }

    void enterSavesFromAFieldAndLeavesFromTheButtonThatLeaves()
    {
        QVERIFY(TestLedger::storeCompany());
        for (const bool saves : { true, false }) {
            ProfileDialog dialog(ProfileDao().load());
            QVERIFY(Hands::show(dialog));
            edit(dialog, u"phone"_s)->setText(saves ? u"1"_s : u"2"_s);
            ModalAnswerer answers;
            if (!saves) {
                Hands::button(dialog, u"取消"_s)->setFocus();
                answers.expectButton(u"放弃修改"_s);
            }
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
            QVERIFY(!dialog.isVisible());
            QCOMPARE(ProfileDao().load().phone, u"1"_s);
        }
    }

    void enterDeclinesTheWizardAndTheDisclaimerFromTheirButtons()
    {
        ProfileWizardDialog wizard(ProfileDao().load());
        DisclaimerDialog disclaimer(DisclaimerDialog::Purpose::Confirm);
        for (const auto& [dialog, button] : { std::pair<QDialog*, QString>(&wizard, u"退出"_s),
                 { &disclaimer, u"不同意并退出"_s } }) {
            QVERIFY(Hands::show(*dialog));
            Hands::button(*dialog, button)->setFocus();
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
            QVERIFY(!dialog->isVisible());
        }
    }

    void theWizardStoresCompanyAndThresholds()
    {
        ProfileWizardDialog wizard(ProfileDao().load());
        wizard.show();
        press(wizard, u"下一步"_s);
        {
            ModalAnswerer answers(u"确定"_s);
            press(wizard, u"下一步"_s);
            QVERIFY(answers.seen().at(0).text.contains(u"请填写公司名称。"_s));
        }
        edit(wizard, u"companyName"_s)->setText(u"杭州山岚设计有限公司"_s);
        edit(wizard, u"shareholderName"_s)->setText(u"林岚"_s);
        press(wizard, u"上一步"_s);
        press(wizard, u"下一步"_s);
        press(wizard, u"下一步"_s);
        edit(wizard, u"bankAccount"_s)->setText(u"5719"_s);
        wizard.findChild<AmountField*>()->clear();
        {
            ModalAnswerer answers(u"确定"_s);
            press(wizard, u"完成"_s);
            QVERIFY(answers.seen().at(0).text.contains(u"大额转账标准必须大于 0 元。"_s));
        }
        wizard.findChild<AmountField*>()->setAmountFen(2'000'000);
        edit(wizard, u"bankName"_s)->setText(QString(101, u'行'));
        {
            ModalAnswerer answers(u"确定"_s);
            press(wizard, u"完成"_s);
            QCOMPARE(answers.seen().at(0).text, u"开户银行最多 100 个字。"_s);
        }
        QTRY_COMPARE(wizard.focusWidget()->objectName(), u"bankName"_s);
        edit(wizard, u"bankName"_s)->clear();
        wizard.findChild<QSpinBox*>(u"frequentWindowDays"_s)->setValue(45);
        wizard.findChild<QSpinBox*>(u"frequentCount"_s)->setValue(4);
        press(wizard, u"完成"_s);
        QCOMPARE(wizard.result(), static_cast<int>(QDialog::Accepted));

        const CompanyProfile stored = ProfileDao().load();
        QCOMPARE(stored.companyName, u"杭州山岚设计有限公司"_s);
        QCOMPARE(stored.shareholderName, u"林岚"_s);
        QCOMPARE(stored.bankAccount, u"5719"_s);
        QCOMPARE(stored.largeAmountFen, 2'000'000);
        QCOMPARE(stored.frequentWindowDays, 45);
        QCOMPARE(stored.frequentCount, 4);
    }

    void theDisclaimerHasToBeReadToTheEnd()
    {
        DisclaimerDialog dialog(DisclaimerDialog::Purpose::Confirm);
        QVERIFY(Hands::show(dialog));
        const QString agreed = u"我已阅读并同意以上全部内容"_s;
        QVERIFY2(!ModalAnswerer::buttonOf(&dialog, agreed), "not yet available");
        QTest::keyClick(dialog.focusWidget(), Qt::Key_End);
        QTRY_VERIFY(ModalAnswerer::buttonOf(&dialog, agreed));
        QVERIFY2(!ModalAnswerer::buttonOf(&dialog, u"同意并继续"_s), "not without the tick");
        press(dialog, agreed);
        press(dialog, u"同意并继续"_s);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    }
};

static const RegisteredTest<TestProfileDialogs> registered;

#include "TestProfileDialogs.moc"
