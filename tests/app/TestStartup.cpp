#include "app/TestStartup.h"

#include "app/MainWindow.h"
#include "app/Startup.h"
#include "core/AppPaths.h"
#include "core/InstanceLock.h"
#include "core/Logger.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "services/Password.h"
#include "support/ModalAnswerer.h"
#include "theme/Theme.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSqlQuery>
#include <QStackedWidget>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace {

// What the window showed before it was closed by the test.
struct WindowSeen {
    bool shown = false;
    bool maximised = false;
    QString statusBar;
};

// Starts the program in this process; closes the main window as soon as it shows.
int runStartup(WindowSeen* seen = nullptr)
{
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* window = qobject_cast<MainWindow*>(widget);
            if (!window || !window->isVisible() || QApplication::activeModalWidget())
                continue;
            if (seen) {
                seen->shown = true;
                seen->maximised = window->isMaximized();
                for (const auto* label :
                    window->findChild<QWidget*>(u"StatusBar"_s)->findChildren<QLabel*>())
                    seen->statusBar += label->text() + u'\n';
            }
            window->close();
        }
    });
    watch.start(20);
    int status = -1;
    {
        const Logger::FinishGuard logger;
        Startup startup;
        status = startup.run();
    }
    return status;
}

void agreeToDisclaimer(QDialog* dialog)
{
    auto* bar = dialog->findChild<QTextBrowser*>()->verticalScrollBar();
    bar->setValue(bar->maximum());
    ModalAnswerer::buttonOf(dialog, u"我已阅读并同意以上全部内容"_s)->click();
    ModalAnswerer::buttonOf(dialog, u"同意并继续"_s)->click();
}

void fillWizard(QDialog* dialog)
{
    ModalAnswerer::buttonOf(dialog, u"下一步"_s)->click();
    dialog->findChild<QLineEdit*>(u"companyName"_s)->setText(u"杭州山岚设计有限公司"_s);
    dialog->findChild<QLineEdit*>(u"shareholderName"_s)->setText(u"林岚"_s);
    ModalAnswerer::buttonOf(dialog, u"下一步"_s)->click();
    ModalAnswerer::buttonOf(dialog, u"完成"_s)->click();
}

// The database as it stands after a first run, closed again.
bool prepareFamiliarOwner(const std::function<bool(ProfileDao&)>& change = {})
{
    if (!DatabaseManager::instance().open())
        return false;
    ProfileDao profiles;
    CompanyProfile profile = profiles.load();
    profile.companyName = u"杭州山岚设计有限公司"_s;
    profile.shareholderName = u"林岚"_s;
    const bool stored = profiles.save(profile) && profiles.confirmDisclaimer(u"DISCLAIMER_V1.0"_s)
        && (!change || change(profiles));
    DatabaseManager::instance().close();
    return stored;
}

CompanyProfile storedProfile()
{
    CompanyProfile profile;
    if (DatabaseManager::instance().open())
        profile = ProfileDao().load();
    DatabaseManager::instance().close();
    return profile;
}

bool runSql(const QString& sql)
{
    const bool done = DatabaseManager::instance().open() && QSqlQuery().exec(sql);
    DatabaseManager::instance().close();
    return done;
}

void expectFailure(const char* reason)
{
    QTest::ignoreMessage(QtCriticalMsg,
        QRegularExpression(u"Start-up stopped: %1"_s.arg(QLatin1StringView(reason))));
}

} // namespace

void TestStartup::init()
{
    DatabaseManager::instance().close();
    TestCase::init();
}

void TestStartup::cleanup()
{
    Theme::instance().apply(ThemeMode::Light);
    QVERIFY2(!QFile::exists(AppPaths::databasePath() + u"-wal"_s), "the database was closed");
}

void TestStartup::aNewOwnerPassesAllGates()
{
    ModalAnswerer answers;
    answers.expect(agreeToDisclaimer);
    answers.expect(fillWizard);
    WindowSeen seen;
    QCOMPARE(runStartup(&seen), 0);
    QVERIFY(seen.shown);
    QVERIFY(seen.maximised);
    QVERIFY(seen.statusBar.contains(u"最近备份：未备份"_s));
    QCOMPARE(answers.seen().at(0).title, u"免责声明"_s);
    QCOMPARE(answers.seen().at(1).title, u"初始设置"_s);

    const CompanyProfile profile = storedProfile();
    QCOMPARE(profile.companyName, u"杭州山岚设计有限公司"_s);
    QCOMPARE(profile.disclaimerVersion, u"DISCLAIMER_V1.0"_s);
    QVERIFY(!profile.disclaimerConfirmedAt.isEmpty());
}

void TestStartup::decliningAGateEndsQuietly_data()
{
    QTest::addColumn<int>("gatesPassed");
    QTest::addColumn<QString>("disclaimerStored");
    QTest::newRow("at the disclaimer") << 0 << QString();
    QTest::newRow("at the wizard") << 1 << u"DISCLAIMER_V1.0"_s;
}

void TestStartup::decliningAGateEndsQuietly()
{
    QFETCH(int, gatesPassed);
    ModalAnswerer answers;
    if (gatesPassed > 0)
        answers.expect(agreeToDisclaimer);
    answers.expect([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    WindowSeen seen;
    QCOMPARE(runStartup(&seen), 0);
    QVERIFY(!seen.shown);
    QTEST(storedProfile().disclaimerVersion, "disclaimerStored");
}

void TestStartup::anOlderDisclaimerIsShownAgain()
{
    QVERIFY(prepareFamiliarOwner(
        [](ProfileDao& profiles) { return profiles.confirmDisclaimer(u"DISCLAIMER_V0.9"_s); }));
    ModalAnswerer answers;
    answers.expect(agreeToDisclaimer);
    WindowSeen seen;
    QCOMPARE(runStartup(&seen), 0);
    QVERIFY(seen.shown);
    QCOMPARE(storedProfile().disclaimerVersion, u"DISCLAIMER_V1.0"_s);
}

void TestStartup::aCompanyNameOfBlanksOpensTheWizard()
{
    QVERIFY(prepareFamiliarOwner([](ProfileDao& profiles) {
        CompanyProfile profile = profiles.load();
        profile.companyName = u"   "_s;
        return profiles.save(profile);
    }));
    ModalAnswerer answers;
    answers.expect(fillWizard);
    WindowSeen seen;
    QCOMPARE(runStartup(&seen), 0);
    QVERIFY(seen.shown);
}

void TestStartup::thePasswordIsAskedFor()
{
    QVERIFY(prepareFamiliarOwner([](ProfileDao& profiles) {
        const auto secret = Password::makeSecret(u"山岚2025"_s);
        return secret && profiles.setPassword(true, secret->hash, secret->salt);
    }));
    {
        ModalAnswerer answers;
        answers.expectButton(u"退出"_s);
        WindowSeen seen;
        QCOMPARE(runStartup(&seen), 0);
        QVERIFY(!seen.shown);
    }
    ModalAnswerer answers;
    answers.expect([](QDialog* dialog) {
        auto* field = dialog->findChild<QLineEdit*>();
        field->setText(u"山岚2025"_s);
        QTest::keyClick(field, Qt::Key_Return);
    });
    WindowSeen seen;
    QCOMPARE(runStartup(&seen), 0);
    QVERIFY(seen.shown);
}

void TestStartup::theStoredThemeIsApplied()
{
    QVERIFY(prepareFamiliarOwner(
        [](ProfileDao& profiles) { return profiles.setThemeMode(u"dark"_s); }));
    QCOMPARE(runStartup(), 0);
    QCOMPARE(Theme::instance().mode(), ThemeMode::Dark);
}

void TestStartup::anUnreadableProfileIsAFailure()
{
    QVERIFY(prepareFamiliarOwner());
    QVERIFY(runSql(u"DELETE FROM company_profile"_s));
    expectFailure("profile cannot be read");
    ModalAnswerer answers;
    answers.expectButton(u"确定"_s);
    WindowSeen seen;
    QCOMPARE(runStartup(&seen), 1);
    QVERIFY(!seen.shown);
    QCOMPARE(answers.seen().at(0).title, u"数据库无法打开"_s);
}

void TestStartup::aDisclaimerThatCannotBeStoredIsAFailure()
{
    QVERIFY(runSql(u"CREATE TRIGGER refuse BEFORE UPDATE ON company_profile BEGIN "
                   "SELECT RAISE(ABORT, 'refused'); END"_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"SQL error: refused.*"_s));
    expectFailure("disclaimer cannot be stored");
    ModalAnswerer answers;
    answers.expect(agreeToDisclaimer);
    answers.expectButton(u"确定"_s);
    QCOMPARE(runStartup(), 1);
    QCOMPARE(answers.seen().at(1).title, u"启动失败"_s);
    QVERIFY(answers.seen().at(1).text.contains(u"免责确认状态无法保存，请检查数据目录权限。"_s));
}

void TestStartup::aDirectoryThatCannotBeCreatedIsAFailure()
{
    QVERIFY(QDir(AppPaths::dataDir()).removeRecursively());
    QFile inTheWay(AppPaths::dataDir());
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    inTheWay.close();
    expectFailure("data directory cannot be created");
    {
        ModalAnswerer answers;
        answers.expectButton(u"确定"_s);
        QCOMPARE(runStartup(), 1);
        QCOMPARE(answers.seen().at(0).title, u"启动失败"_s);
        QVERIFY(
            answers.seen().at(0).text.contains(u"无法创建数据目录：%1"_s.arg(AppPaths::dataDir())));
    }
    QVERIFY(inTheWay.remove());
}

void TestStartup::theLockEndsWithTheProgram()
{
    QVERIFY(prepareFamiliarOwner());
    QCOMPARE(runStartup(), 0);
    InstanceLock lock(AppPaths::instanceLockPath());
    QCOMPARE(lock.acquire(), InstanceLock::Outcome::Acquired);
}
