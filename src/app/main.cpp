#include "app/ApplicationSetup.h"
#include "app/Startup.h"
#include "app/TerminationSignals.h"
#include "core/Logger.h"

#include <QApplication>

int main(int argc, char** argv)
{
    ApplicationSetup::keepHomeClean();
    QApplication app(argc, argv);
    ApplicationSetup::configure(app);
    const TerminationSignals terminationSignals;
    // Declared before the start-up, so that the log outlives window and database.
    const Logger::FinishGuard logger;
    Startup startup;
    return startup.run();
}
