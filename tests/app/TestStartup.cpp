#include "app/FamiliarOwner.h"
#include "app/MainWindow.h"
#include "app/Startup.h"
#include "core/AppPaths.h"
#include "core/Logger.h"
#include "services/Password.h"
#include "support/ModalAnswerer.h"
#include "support/TestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "theme/Theme.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSqlQuery>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace {

// What the window showed before it was closed by the test, and the program's exit status.
struct Seen {
    int status = -1;
    bool shown = false;
    bool maximised = false;
};

// Starts the program in this process; closes the main window as soon as it shows.
Seen runStartup()
{
    Seen seen;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* window = qobject_cast<MainWindow*>(widget);
            if (!window || !window->isVisible() || QApplication::activeModalWidget())
                continue;
            seen.shown = true;
            seen.maximised = window->isMaximized();
            window->close();
        }
    });
    watch.start(20);
    const Logger::FinishGuard logger;
    Startup startup;
    seen.status = startup.run();
    return seen;
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

CompanyProfile storedProfile()
{
    CompanyProfile profile;
    if (DatabaseManager::instance().open())
        profile = ProfileDao().load();
    DatabaseManager::instance().close();
    return profile;
}

void expectFailure(const QString& reason)
{
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(u"Start-up stopped: "_s + reason));
}

} // namespace

class TestStartup final : public TestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseManager::instance().close();
        TestCase::init();
    }

    void cleanup()
    {
        Theme::instance().apply(ThemeMode::Light);
        QVERIFY2(!QFile::exists(AppPaths::databasePath() + u"-wal"_s), "the database was closed");
    }

    void aNewOwnerPassesAllGates()
    {
        ModalAnswerer answers;
        answers.expect(agreeToDisclaimer);
        answers.expect(fillWizard);
        const Seen seen = runStartup();
        QCOMPARE(seen.status, 0);
        QVERIFY(seen.shown);
        QVERIFY(seen.maximised);
        QCOMPARE(answers.seen().at(0).title, u"免责声明"_s);
        QCOMPARE(answers.seen().at(1).title, u"初始设置"_s);

        const CompanyProfile profile = storedProfile();
        QCOMPARE(profile.companyName, u"杭州山岚设计有限公司"_s);
        QCOMPARE(profile.disclaimerVersion, u"DISCLAIMER_V1.0"_s);
        QVERIFY(!profile.disclaimerConfirmedAt.isEmpty());
    }

    void decliningAGateEndsQuietly_data()
    {
        addColumns<int, QString>("gatesPassed", "disclaimerStored");
        addCase("at the disclaimer", 0, QString());
        addCase("at the wizard", 1, u"DISCLAIMER_V1.0"_s);
    }

    void decliningAGateEndsQuietly()
    {
        QFETCH(int, gatesPassed);
        ModalAnswerer answers;
        if (gatesPassed > 0)
            answers.expect(agreeToDisclaimer);
        answers.expect([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
        const Seen seen = runStartup();
        QCOMPARE(seen.status, 0);
        QVERIFY(!seen.shown);
        QTEST(storedProfile().disclaimerVersion, "disclaimerStored");
    }

    void anOlderDisclaimerIsShownAgain()
    {
        QVERIFY(prepareFamiliarOwner(
            [](ProfileDao& profiles) { return profiles.confirmDisclaimer(u"DISCLAIMER_V0.9"_s); }));
        ModalAnswerer answers(agreeToDisclaimer);
        const Seen seen = runStartup();
        QCOMPARE(seen.status, 0);
        QVERIFY(seen.shown);
        QCOMPARE(storedProfile().disclaimerVersion, u"DISCLAIMER_V1.0"_s);
    }

    void aCompanyNameOfBlanksOpensTheWizard()
    {
        QVERIFY(prepareFamiliarOwner([](ProfileDao& profiles) {
            CompanyProfile profile = profiles.load();
            profile.companyName = u"   "_s;
            return profiles.save(profile);
        }));
        ModalAnswerer answers(fillWizard);
        const Seen seen = runStartup();
        QCOMPARE(seen.status, 0);
        QVERIFY(seen.shown);
    }

    void thePasswordIsAskedFor_data()
    {
        addColumns<QString, bool>("button", "shown");
        addCase("entered", u"进入"_s, true);
        addCase("declined", u"退出"_s, false);
    }

    void thePasswordIsAskedFor()
    {
        QFETCH(QString, button);
        QVERIFY(prepareFamiliarOwner([](ProfileDao& profiles) {
            const auto secret = Password::makeSecret(u"山岚2025"_s);
            return secret && profiles.setPassword(true, secret->hash, secret->salt);
        }));
        ModalAnswerer answers([button](QDialog* dialog) {
            dialog->findChild<QLineEdit*>()->setText(u"山岚2025"_s);
            ModalAnswerer::buttonOf(dialog, button)->click();
        });
        const Seen seen = runStartup();
        QCOMPARE(seen.status, 0);
        QTEST(seen.shown, "shown");
    }

    void theStoredThemeIsApplied()
    {
        QVERIFY(prepareFamiliarOwner(
            [](ProfileDao& profiles) { return profiles.setThemeMode(u"dark"_s); }));
        QCOMPARE(runStartup().status, 0);
        QCOMPARE(Theme::instance().mode(), ThemeMode::Dark);
    }

    void anUnreadableDatabaseIsAFailure_data()
    {
        addColumns<bool, QString>("garbage", "reason");
        addCase("no database", true, u"database cannot be opened"_s);
        addCase("no profile in it", false, u"profile cannot be read"_s);
    }

    void anUnreadableDatabaseIsAFailure()
    {
        QFETCH(bool, garbage);
        QFETCH(QString, reason);
        QVERIFY(prepareFamiliarOwner(
            [](ProfileDao&) { return QSqlQuery().exec(u"DELETE FROM company_profile"_s); }));
        const QByteArray bytes(8192, 'x');
        if (garbage) {
            QVERIFY(TestFile::put(AppPaths::databasePath(), bytes));
            QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(u"not a database"_s));
        }
        expectFailure(reason);
        ModalAnswerer answers(u"确定"_s);
        const Seen seen = runStartup();
        QCOMPARE(seen.status, 1);
        QVERIFY(!seen.shown);
        QCOMPARE(answers.seen().at(0).title, u"数据库无法打开"_s);
        QCOMPARE(TestFile::bytesOf(AppPaths::databasePath()) == bytes, garbage);
    }

    void aDisclaimerThatCannotBeStoredIsAFailure()
    {
        QVERIFY(DatabaseManager::instance().open());
        QVERIFY(TestDatabase::refuseUpdates(u"company_profile"_s));
        DatabaseManager::instance().close();
        expectFailure(u"disclaimer cannot be stored"_s);
        ModalAnswerer answers(agreeToDisclaimer);
        answers.expectButton(u"确定"_s);
        QCOMPARE(runStartup().status, 1);
        QCOMPARE(answers.seen().at(1).title, u"启动失败"_s);
        QVERIFY(
            answers.seen().at(1).text.contains(u"免责确认状态无法保存，请检查数据目录权限。"_s));
    }

    void aDirectoryThatCannotBeCreatedIsAFailure()
    {
        QVERIFY(QDir(AppPaths::dataDir()).removeRecursively());
        QVERIFY(TestFile::put(AppPaths::dataDir(), "in the way"));
        expectFailure(u"data directory cannot be created"_s);
        ModalAnswerer answers(u"确定"_s);
        QCOMPARE(runStartup().status, 1);
        QCOMPARE(answers.seen().at(0).title, u"启动失败"_s);
        QVERIFY(
            answers.seen().at(0).text.contains(u"无法创建数据目录：%1"_s.arg(AppPaths::dataDir())));
        QCOMPARE(TestFile::bytesOf(AppPaths::dataDir()), QByteArray("in the way"));
        QVERIFY(QFile::remove(AppPaths::dataDir()));
    }

    void aStartAfterACrashCatchesUp()
    {
        // The files as a process leaves them that dies after storing an entry: not yet evaluated.
        const QString log = AppPaths::databasePath() + u"-wal"_s;
        QByteArray database;
        QByteArray logged;
        QVERIFY(prepareFamiliarOwner([&](ProfileDao&) {
            const bool stored = TestLedger::add(TestLedger::entry(
                                    u"2025-03-01"_s, Category::Other, Direction::Out, 9'000'000))
                > 0;
            database = TestFile::bytesOf(AppPaths::databasePath());
            logged = TestFile::bytesOf(log);
            return stored;
        }));
        QVERIFY(TestFile::put(AppPaths::databasePath(), database) && TestFile::put(log, logged));
        QCOMPARE(runStartup().status, 0);
        QCOMPARE(TestDatabase::rowOfFile(
                     AppPaths::databasePath(), u"SELECT risk_level FROM transactions"_s),
            u"low"_s);
    }
};

static const RegisteredTest<TestStartup> registered;

#include "TestStartup.moc"
