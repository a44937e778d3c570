#include "core/AppPaths.h"
#include "db/ProfileDao.h"
#include "pages/settings/SettingsPage.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "theme/Theme.h"
#include "widgets/AmountField.h"
#include "widgets/Banner.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include <memory>

using namespace Qt::StringLiterals;
using Hands::button;
using Hands::press;
using Hands::shows;

class TestSettingsPage final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        m_page = std::make_unique<SettingsPage>();
        m_page->refresh();
        m_page->show();
    }

    void cleanup()
    {
        m_page.reset();
        Theme::instance().apply(ThemeMode::Light);
        DatabaseTestCase::cleanup();
    }

    void aNameFromAnOlderProgramLeavesThePageUsable()
    {
        CompanyProfile profile = ProfileDao().load();
        profile.shareholderName = QString(10'000, u'林');
        QVERIFY(ProfileDao().save(profile));
        SettingsPage page;
        page.resize(900, 700);
        page.refresh();
        page.show();
        const QString shown = QString(100, u'林') + u'…';
        const auto labels = page.findChildren<QLabel*>();
        const auto label = std::find_if(labels.begin(), labels.end(),
            [&shown](const QLabel* one) { return one->text() == shown; });
        QVERIFY(label != labels.end());
        QVERIFY((*label)->height() < 100);
        QVERIFY((*label)->toolTip().contains(QString(300, u'林')));
        QVERIFY2((*label)->toolTip().size() < 1000, "a tool tip that covers the screen");
    }

    void theProfileIsShownAndEdited()
    {
        QVERIFY(shows(*m_page, u"未填写"_s));
        ModalAnswerer answers([](QDialog* dialog) {
            dialog->findChild<QLineEdit*>(u"companyName"_s)->setText(u"山岚 <b>%1&"_s);
            dialog->findChild<QLineEdit*>(u"shareholderName"_s)->setText(u"林岚"_s);
            ModalAnswerer::buttonOf(dialog, u"保存"_s)->click();
        });
        press(*m_page, u"编辑档案"_s);
        QVERIFY(shows(*m_page, u"山岚 <b>%1&"_s));
        QCOMPARE(ProfileDao().load().shareholderName, u"林岚"_s);
    }

    void theThemeChangesAtOnceWhenItCanBeStored()
    {
        QVERIFY(button(*m_page, u"浅色"_s)->isChecked());
        press(*m_page, u"深色"_s);
        QCOMPARE(Theme::instance().mode(), ThemeMode::Dark);
        QCOMPARE(ProfileDao().load().themeMode, u"dark"_s);
        m_page->refresh();
        QVERIFY(button(*m_page, u"深色"_s)->isChecked());

        QVERIFY(TestDatabase::refuseUpdates(u"company_profile"_s));
        ModalAnswerer answers(u"确定"_s);
        press(*m_page, u"浅色"_s);
        QCOMPARE(Theme::instance().mode(), ThemeMode::Dark);
        QVERIFY2(button(*m_page, u"深色"_s)->isChecked(), "the page shows what is stored");
    }

    void newThresholdsAreAppliedToTheLedger()
    {
        const qint64 id = TestLedger::add(
            TestLedger::entry(u"2026-03-01"_s, Category::Other, Direction::Out, 1'000'000));
        m_page->findChild<AmountField*>()->setAmountFen(1'000'000);
        m_page->findChild<QSpinBox*>(u"frequentCount"_s)->setValue(5);
        press(*m_page, u"保存标准"_s);
        QCOMPARE(ProfileDao().load().largeAmountFen, 1'000'000);
        QCOMPARE(ProfileDao().load().frequentCount, 5);
        QCOMPARE(TestLedger::autoRisk(id), u"low|R3"_s);
    }

    void thresholdsNotSavedYetOutliveOtherChanges()
    {
        auto* amount = m_page->findChild<AmountField*>();
        amount->setAmountFen(1'234'500);
        press(*m_page, u"深色"_s);
        m_page->refresh();
        QCOMPARE(amount->amountFen(), 1'234'500);
        QCOMPARE(ProfileDao().load().largeAmountFen, CompanyProfile().largeAmountFen);
        amount->setAmountFen(CompanyProfile().largeAmountFen);
        CompanyProfile profile = ProfileDao().load();
        profile.largeAmountFen = 7'000'000;
        QVERIFY(ProfileDao().save(profile));
        m_page->refresh();
        QCOMPARE(amount->amountFen(), 7'000'000);
    }

    void aLongLedgerIsEvaluatedBehindANotice_data()
    {
        QTest::addColumn<int>("entries");
        QTest::addColumn<bool>("noticed");
        addCase("a long ledger", 5000, true);
        addCase("a short one", 4999, false);
    }

    void aLongLedgerIsEvaluatedBehindANotice()
    {
        QFETCH(int, entries);
        QFETCH(bool, noticed);
        QCOMPARE(TestLedger::addMany(entries), QString());
        QCOMPARE(Hands::showsNotice([this] { press(*m_page, u"保存标准"_s); }), noticed);
    }

    void anEmptiedAmountIsNotStoredAsZeroAndComesBackWithTheDefaults()
    {
        auto* amount = m_page->findChild<AmountField*>();
        amount->clear();
        ModalAnswerer answers(u"确定"_s);
        press(*m_page, u"保存标准"_s);
        QCOMPARE(answers.seen().value(0).text, u"大额转账标准必须大于 0 元。"_s);
        QCOMPARE(ProfileDao().load().largeAmountFen, 5'000'000);
        m_page->findChild<QSpinBox*>(u"frequentWindowDays"_s)->setValue(7);
        press(*m_page, u"恢复默认"_s);
        QCOMPARE(m_page->findChild<QSpinBox*>(u"frequentWindowDays"_s)->value(), 30);
        QCOMPARE(amount->amountFen(), 5'000'000);
    }

    void anUnreadableProfileOffersNothingToChange()
    {
        QVERIFY(m_page->findChild<QPushButton*>(u"editProfile"_s)->isEnabled());
        QCOMPARE(TestDatabase::run({ u"DELETE FROM company_profile"_s }), QString());
        press(*m_page, u"编辑档案"_s);
        QVERIFY2(!QApplication::activeModalWidget(), "no form with defaults opens");
        m_page->refresh();
        QVERIFY(!m_page->findChild<QPushButton*>(u"editProfile"_s)->isEnabled());
        QVERIFY(m_page->findChild<Banner*>()->isVisible());
    }

    void aSectionIsLedTo_data()
    {
        QTest::addColumn<QString>("title");
        addCase("profile", u"公司档案"_s);
        addCase("backup", u"数据备份"_s);
        addCase("selfcheck", u"自检与日志"_s);
    }

    void aSectionIsLedTo()
    {
        QFETCH(QString, title);
        m_page->resize(900, 300);
        m_page->activateWindow();
        m_page->applyNavParams({ { u"section"_s, QString::fromUtf8(QTest::currentDataTag()) } });
        m_page->refresh();
        const auto focusedCard = [this] {
            const QWidget* widget = m_page->focusWidget();
            while (widget && widget->objectName() != u"Card")
                widget = widget->parentWidget();
            return widget;
        };
        QTRY_VERIFY(focusedCard());
        QCOMPARE(focusedCard()->accessibleName(), title);
        const int top = focusedCard()->mapTo(m_page.get(), QPoint()).y();
        QVERIFY2(top >= 0 && top <= 20, qPrintable(QString::number(top)));
    }

    void theSizesOfTheDataAreCounted()
    {
        for (int i = 0; i < 300; ++i)
            QVERIFY(TestFile::put(
                AppPaths::voucherAssetsDir() + u"/%1.pdf"_s.arg(i), QByteArray(1024, 'x')));
        m_page->refresh();
        QVERIFY(shows(*m_page, AppPaths::dataDir()));
        QTRY_VERIFY(shows(*m_page, u"300.0 KB（300 个文件）"_s));
    }

    void thePasswordButtonsFollowItsState()
    {
        QVERIFY(button(*m_page, u"设置密码"_s));
        QVERIFY(!button(*m_page, u"关闭密码"_s));

        ModalAnswerer answers([](QDialog* dialog) {
            dialog->findChild<QLineEdit*>(u"newPassword"_s)->setText(u"山岚2025"_s);
            dialog->findChild<QLineEdit*>(u"repeatedPassword"_s)->setText(u"山岚2025"_s);
            ModalAnswerer::buttonOf(dialog, u"设置密码"_s)->click();
        });
        press(*m_page, u"设置密码"_s);
        QVERIFY(ProfileDao().load().passwordEnabled);
        QVERIFY(!button(*m_page, u"设置密码"_s));
        QVERIFY(button(*m_page, u"修改密码"_s));
        QVERIFY(button(*m_page, u"关闭密码"_s));
    }

private:
    std::unique_ptr<SettingsPage> m_page;
};

static const RegisteredTest<TestSettingsPage> registered;

#include "TestSettingsPage.moc"
