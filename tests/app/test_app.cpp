#include "app/ApplicationSetup.h"
#include "app/TestMainWindow.h"
#include "app/TestStartup.h"

#include <QApplication>

int main(int argc, char** argv)
{
    ApplicationSetup::keepHomeClean();
    QApplication app(argc, argv);
    ApplicationSetup::configure(app);
    return runTests<TestMainWindow, TestStartup>(argc, argv);
}
