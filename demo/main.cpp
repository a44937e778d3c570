#include "app/ApplicationSetup.h"
#include "app/Startup.h"
#include "core/Logger.h"
#include "DemoClock.h"
#include "DemoLauncher.h"
#include "DemoTour.h"

#include <QApplication>
#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace {

int launch(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Fills a fresh folder with the records of a small company and takes pictures of every "
        "page and dialog."_s);
    parser.addHelpOption();
    const QCommandLineOption folder(
        u"folder"_s, u"The folder to fill; a new temporary one when not given."_s, u"DIR"_s);
    const QCommandLineOption quick(u"short"_s, u"Record three months and not fourteen."_s);
    parser.addOptions({ folder, quick });
    parser.process(app);
    const DemoSize size = parser.isSet(quick) ? DemoSize::Short : DemoSize::Full;
    return DemoLauncher(parser.value(folder), size).run();
}

int runInside(int argc, char** argv)
{
    DemoClock::set(QDate(2024, 6, 3), 9);
    ApplicationSetup::keepHomeClean();
    const QApplication app(argc, argv);
    ApplicationSetup::configure(*qApp);
    QApplication::setCursorFlashTime(0); // the same pictures whenever they are taken
    const bool quick = QApplication::arguments().value(2) == DemoLauncher::nameOf(DemoSize::Short);
    DemoTour tour(QApplication::applicationDirPath(), quick ? DemoSize::Short : DemoSize::Full);
    int status = 0;
    {
        const Logger::FinishGuard logger;
        Startup startup;
        tour.begin();
        status = startup.run();
    }
    return tour.conclude(status);
}

} // namespace

int main(int argc, char** argv)
{
    const bool inside = argc > 1 && DemoLauncher::insideOption() == QLatin1String(argv[1]);
    return inside ? runInside(argc, argv) : launch(argc, argv);
}
