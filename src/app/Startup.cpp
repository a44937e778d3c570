#include "app/Startup.h"

#include "app/MainWindow.h"
#include "app/PageFactory.h"
#include "app/SelfCheckStart.h"
#include "app/TerminationSignals.h"
#include "core/AppPaths.h"
#include "core/Logger.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "dialogs/DisclaimerDialog.h"
#include "dialogs/LoginDialog.h"
#include "dialogs/ProfileWizardDialog.h"
#include "pages/IPage.h"
#include "services/backup/RestoreRepair.h"
#include "services/ProfileRules.h"
#include "services/repair/CrashRepair.h"
#include "theme/Theme.h"
#include "widgets/MessageBox.h"
#include "widgets/SplashScreen.h"

#include <QApplication>
#include <QEventLoop>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr int failed = 1;
constexpr int declined = 0;

const QString& disclaimerVersion()
{
    static const QString version = u"DISCLAIMER_V1.0"_s;
    return version;
}

int failure(const char* reason, const QString& title, const QString& text)
{
    qCritical("Start-up stopped: %s", reason);
    MessageBox::critical(nullptr, title, text);
    return failed;
}

} // namespace

Startup::Startup()
    : m_lock(AppPaths::instanceLockPath())
{
}

Startup::~Startup()
{
    m_window.reset();
    DatabaseManager::instance().close();
    m_lock.release();
}

int Startup::run()
{
    // Splash and gates come and go: the last one to close must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
    using Gate = Verdict (Startup::*)();
    for (const Gate gate : { &Startup::openData, &Startup::buildWindow, &Startup::passDisclaimer,
             &Startup::passWizard, &Startup::passPassword }) {
        if (const Verdict verdict = (this->*gate)())
            return *verdict;
        // The loop of a gate may have ended by itself in the same moment.
        if (TerminationSignals::haveCome())
            return declined;
    }
    return showWindow();
}

Startup::Verdict Startup::openData()
{
    using Step = Verdict (Startup::*)();
    for (const Step step : { &Startup::prepareDirectories, &Startup::takeLock,
             &Startup::openDatabase, &Startup::loadProfile }) {
        if (const Verdict verdict = (this->*step)())
            return verdict;
    }
    return {};
}

Startup::Verdict Startup::prepareDirectories()
{
    if (!AppPaths::ensureDirs())
        return failure("data directory cannot be created", u"启动失败"_s,
            u"无法创建数据目录：%1"_s.arg(AppPaths::dataDir()));
    Logger::install();
    qInfo("Brixa starting, data dir: %s", qUtf8Printable(AppPaths::dataDir()));
    return {};
}

Startup::Verdict Startup::takeLock()
{
    const InstanceLock::Outcome outcome = m_lock.acquire();
    if (outcome == InstanceLock::Outcome::Acquired)
        return {};
    if (outcome == InstanceLock::Outcome::CannotCreate)
        return failure("data directory cannot be written", u"启动失败"_s,
            u"无法写入数据目录：%1\n请检查该文件夹的写入权限和磁盘空间。"_s.arg(
                AppPaths::dataDir()));
    return failure("another instance holds the data directory", u"启动失败"_s,
        u"程序已在运行，请切换到已打开的窗口。"_s);
}

Startup::Verdict Startup::openDatabase()
{
    if (const std::optional<QString> problem = RestoreRepair::run())
        return failure("an interrupted restore cannot be repaired", u"启动失败"_s, *problem);
    DatabaseManager& database = DatabaseManager::instance();
    const CrashRepair repair;
    if (database.open()) {
        repair.run();
        if (database.isReadOnly())
            MessageBox::warn(nullptr, u"数据库为只读"_s,
                u"数据库文件是只读的：可以查看记录，但任何修改都无法保存。\n请检查文件的权限：%1"_s
                    .arg(AppPaths::databasePath()));
        return {};
    }
    return failure("database cannot be opened", u"数据库无法打开"_s, database.lastError());
}

Startup::Verdict Startup::loadProfile()
{
    // A profile that cannot be read must not be taken for one without a password.
    ProfileDao profiles;
    const std::optional<CompanyProfile> profile = profiles.find();
    if (!profile)
        return failure("profile cannot be read", u"数据库无法打开"_s,
            u"公司档案无法读取：%1"_s.arg(profiles.lastError()));
    m_profile = *profile;
    Theme::instance().apply(fromCode<ThemeMode>(m_profile.themeMode));
    return {};
}

Startup::Verdict Startup::buildWindow()
{
    SplashScreen splash;
    QEventLoop untilFinished;
    bool finished = false;
    QObject::connect(&splash, &SplashScreen::finished, &untilFinished, [&] {
        finished = true;
        untilFinished.quit();
    });
    splash.start();
    m_window = std::make_unique<MainWindow>(createPage);
    if (!finished)
        untilFinished.exec();
    // Ended by the operating system and not by the splash: the program is to end.
    if (!finished)
        return declined;
    return {};
}

Startup::Verdict Startup::passDisclaimer()
{
    if (m_profile.disclaimerVersion == disclaimerVersion())
        return {};
    qInfo("Waiting at the disclaimer");
    DisclaimerDialog dialog(DisclaimerDialog::Purpose::Confirm);
    if (dialog.exec() != QDialog::Accepted)
        return declined;
    if (!ProfileDao().confirmDisclaimer(disclaimerVersion()))
        return failure("disclaimer cannot be stored", u"启动失败"_s,
            u"免责确认状态无法保存，请检查数据目录权限。"_s);
    m_profile.disclaimerVersion = disclaimerVersion();
    return {};
}

Startup::Verdict Startup::passWizard()
{
    if (ProfileRules::isComplete(m_profile))
        return {};
    qInfo("Waiting at the first-run wizard");
    ProfileWizardDialog dialog(m_profile);
    if (dialog.exec() != QDialog::Accepted)
        return declined;
    return {};
}

Startup::Verdict Startup::passPassword()
{
    if (const Verdict verdict = loadProfile())
        return verdict;
    if (!m_profile.passwordEnabled)
        return {};
    qInfo("Waiting at the start-up password");
    LoginDialog dialog({ .hash = m_profile.passwordHash, .salt = m_profile.passwordSalt });
    if (dialog.exec() != QDialog::Accepted)
        return declined;
    return {};
}

int Startup::showWindow()
{
    // Wizard and disclaimer may have changed what the hidden window read.
    m_window->refreshCurrent();
    const QRect available = QApplication::primaryScreen()->availableGeometry();
    QRect frame = m_window->frameGeometry();
    frame.moveCenter(available.center());
    m_window->move(frame.topLeft());
    new SelfCheckStart(m_window.get());
    m_window->showMaximized();
    qInfo("Main window shown");
    QApplication::setQuitOnLastWindowClosed(true);
    return QApplication::exec();
}
