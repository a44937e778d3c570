#include "core/AppPaths.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "pages/settings/SettingsPage.h"
#include "support/DatabaseTestCase.h"
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
#include <QRadioButton>
#include <QSpinBox>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QStringList visibleButtons(const QWidget& page)
{
    QStringList texts;
    for (const auto* button : page.findChildren<QPushButton*>()) {
        if (button->isVisible())
            texts += button->text();
    }
    return texts;
}

void press(const QWidget& page, const QString& text)
{
    for (auto* button : page.findChildren<QPushButton*>()) {
        if (button->isVisible() && button->text() == text)
            button->click();
    }
}

bool shows(const QWidget& page, const QString& text)
{
    const auto labels = page.findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(),
        [&text](const QLabel* label) { return label->text() == text; });
}

QRadioButton* choice(const QWidget& page, const QString& text)
{
    for (auto* button : page.findChildren<QRadioButton*>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

} // namespace

class TestSettingsPage final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void cleanup()
    {
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
        QVERIFY((*label)->toolTip().contains(profile.shareholderName));
    }

    void theProfileIsShownAndEdited()
    {
        SettingsPage page;
        page.refresh();
        page.show();
        QVERIFY(shows(page, u"未填写"_s));
        ModalAnswerer answers([](QDialog* dialog) {
            dialog->findChild<QLineEdit*>(u"companyName"_s)->setText(u"山岚 <b>%1&"_s);
            dialog->findChild<QLineEdit*>(u"shareholderName"_s)->setText(u"林岚"_s);
            ModalAnswerer::buttonOf(dialog, u"保存"_s)->click();
        });
        press(page, u"编辑档案"_s);
        QVERIFY(shows(page, u"山岚 <b>%1&"_s));
        QCOMPARE(ProfileDao().load().shareholderName, u"林岚"_s);
    }

    void theThemeChangesAtOnceAndIsStored()
    {
        SettingsPage page;
        page.refresh();
        QVERIFY(choice(page, u"浅色"_s)->isChecked());
        choice(page, u"深色"_s)->toggle();
        QCOMPARE(Theme::instance().mode(), ThemeMode::Dark);
        QCOMPARE(ProfileDao().load().themeMode, u"dark"_s);
        page.refresh();
        QVERIFY(choice(page, u"深色"_s)->isChecked());
    }

    void aThemeThatCannotBeStoredIsNotApplied()
    {
        QVERIFY(TestDatabase::refuseUpdates(u"company_profile"_s));
        SettingsPage page;
        page.refresh();
        ModalAnswerer answers(u"确定"_s);
        choice(page, u"深色"_s)->toggle();
        QCOMPARE(Theme::instance().mode(), ThemeMode::Light);
        QVERIFY2(choice(page, u"浅色"_s)->isChecked(), "the page shows what is stored");
    }

    void newThresholdsAreAppliedToTheLedger()
    {
        Transaction entry;
        entry.transDate = QDate(2026, 3, 1);
        entry.summary = u"采购设备"_s;
        entry.direction = Direction::Out;
        entry.amountFen = 1'000'000;
        entry.counterpartyName = u"某供应商"_s;
        QVERIFY(TransactionDao().insert(entry));
        SettingsPage page;
        page.refresh();
        page.show();
        page.findChild<AmountField*>()->setAmountFen(1'000'000);
        page.findChild<QSpinBox*>(u"frequentCount"_s)->setValue(5);
        press(page, u"保存标准"_s);
        QCOMPARE(ProfileDao().load().largeAmountFen, 1'000'000);
        QCOMPARE(ProfileDao().load().frequentCount, 5);
        QCOMPARE(TransactionDao().findById(entry.id)->riskLevel, RiskLevel::Low);
    }

    void thresholdsNotSavedYetOutliveOtherChanges()
    {
        SettingsPage page;
        page.refresh();
        auto* amount = page.findChild<AmountField*>();
        amount->setAmountFen(1'234'500);
        choice(page, u"深色"_s)->toggle();
        page.refresh();
        QCOMPARE(amount->amountFen(), 1'234'500);
        QCOMPARE(ProfileDao().load().largeAmountFen, CompanyProfile().largeAmountFen);
        amount->setAmountFen(CompanyProfile().largeAmountFen);
        CompanyProfile profile = ProfileDao().load();
        profile.largeAmountFen = 7'000'000;
        QVERIFY(ProfileDao().save(profile));
        page.refresh();
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
        SettingsPage page;
        page.refresh();
        page.show();
        bool seen = false;
        QTimer::singleShot(0, &page, [&seen] {
            const QWidget* notice = QApplication::activeModalWidget();
            seen = notice && notice->objectName() == u"BusyNotice";
        });
        press(page, u"保存标准"_s);
        QCOMPARE(seen, noticed);
    }

    void anEmptiedAmountIsNotStoredAsZero()
    {
        SettingsPage page;
        page.refresh();
        page.show();
        auto* amount = page.findChild<AmountField*>();
        amount->clear();
        ModalAnswerer answers(u"确定"_s);
        press(page, u"保存标准"_s);
        QCOMPARE(answers.seen().value(0).text, u"大额转账标准必须大于 0 元。"_s);
        QCOMPARE(ProfileDao().load().largeAmountFen, 5'000'000);
    }

    void defaultThresholdsCanBeRestored()
    {
        SettingsPage page;
        page.refresh();
        page.show();
        page.findChild<QSpinBox*>(u"frequentWindowDays"_s)->setValue(7);
        press(page, u"恢复默认"_s);
        QCOMPARE(page.findChild<QSpinBox*>(u"frequentWindowDays"_s)->value(), 30);
        QCOMPARE(page.findChild<AmountField*>()->amountFen(), 5'000'000);
    }

    void anUnreadableProfileOffersNothingToChange()
    {
        SettingsPage page;
        page.refresh();
        page.show();
        QVERIFY(page.findChild<QPushButton*>(u"editProfile"_s)->isEnabled());
        QCOMPARE(TestDatabase::run({ u"DELETE FROM company_profile"_s }), QString());
        press(page, u"编辑档案"_s);
        QVERIFY2(!QApplication::activeModalWidget(), "no form with defaults opens");
        page.refresh();
        QVERIFY(!page.findChild<QPushButton*>(u"editProfile"_s)->isEnabled());
        QVERIFY(page.findChild<Banner*>()->isVisible());
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
        SettingsPage page;
        page.resize(900, 300);
        page.show();
        page.activateWindow();
        page.applyNavParams({ { u"section"_s, QString::fromUtf8(QTest::currentDataTag()) } });
        page.refresh();
        const auto focusedCard = [&page] {
            const QWidget* widget = page.focusWidget();
            while (widget && widget->objectName() != u"Card")
                widget = widget->parentWidget();
            return widget;
        };
        QTRY_VERIFY(focusedCard());
        QCOMPARE(focusedCard()->accessibleName(), title);
        const int top = focusedCard()->mapTo(&page, QPoint()).y();
        QVERIFY2(top >= 0 && top <= 20, qPrintable(QString::number(top)));
    }

    void theSizesOfTheDataAreCounted()
    {
        for (int i = 0; i < 300; ++i)
            QVERIFY(TestFile::put(
                AppPaths::voucherAssetsDir() + u"/%1.pdf"_s.arg(i), QByteArray(1024, 'x')));
        SettingsPage page;
        page.refresh();
        page.show();
        QVERIFY(shows(page, AppPaths::dataDir()));
        QTRY_VERIFY(shows(page, u"300.0 KB（300 个文件）"_s));
    }

    void thePasswordButtonsFollowItsState()
    {
        SettingsPage page;
        page.refresh();
        page.show();
        QVERIFY(visibleButtons(page).contains(u"设置密码"_s));
        QVERIFY(!visibleButtons(page).contains(u"关闭密码"_s));

        ModalAnswerer answers([](QDialog* dialog) {
            dialog->findChild<QLineEdit*>(u"newPassword"_s)->setText(u"山岚2025"_s);
            dialog->findChild<QLineEdit*>(u"repeatedPassword"_s)->setText(u"山岚2025"_s);
            ModalAnswerer::buttonOf(dialog, u"设置密码"_s)->click();
        });
        press(page, u"设置密码"_s);
        QVERIFY(ProfileDao().load().passwordEnabled);
        QVERIFY(!visibleButtons(page).contains(u"设置密码"_s));
        QVERIFY(visibleButtons(page).contains(u"修改密码"_s));
        QVERIFY(visibleButtons(page).contains(u"关闭密码"_s));
    }
};

static const RegisteredTest<TestSettingsPage> registered;

#include "TestSettingsPage.moc"
