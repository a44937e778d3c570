#include "app/Program.h"

#include "app/ApplicationSetup.h"
#include "app/Startup.h"
#include "app/TerminationSignals.h"
#include "core/Logger.h"
#include "core/ProgramEnd.h"
#include "widgets/MessageBox.h"

#include <QApplication>
#include <QDir>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace Program {

namespace {

// The window, the database, the lock and the log are closed when this returns.
int runOnce()
{
    const TerminationSignals terminationSignals;
    // Declared before the start-up, so that the log outlives window and database.
    const Logger::FinishGuard logger;
    Startup startup;
    return startup.run();
}

int startAgain()
{
    const QString program = QCoreApplication::applicationFilePath();
    if (QProcess::startDetached(program, QCoreApplication::arguments().mid(1), QDir::currentPath()))
        return 0;
    MessageBox::warn(nullptr, u"无法自动重启"_s,
        u"数据已恢复，但软件未能自动重启。请手动打开：\n%1"_s.arg(
            QDir::toNativeSeparators(program)));
    return 1;
}

} // namespace

int run(int argc, char** argv)
{
    TerminationSignals::ignoreBrokenPipes();
    ApplicationSetup::keepHomeClean();
    QApplication app(argc, argv);
    ApplicationSetup::configure(app);
    const int status = runOnce();
    return status == ProgramEnd::restartStatus ? startAgain() : status;
}

} // namespace Program
