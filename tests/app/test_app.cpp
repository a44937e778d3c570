#include "app/ApplicationSetup.h"
#include "support/TestCase.h"

#include <QApplication>

int main(int argc, char** argv)
{
    ApplicationSetup::keepHomeClean();
    QApplication app(argc, argv);
    ApplicationSetup::configure(app);
    return runRegisteredTests(argc, argv);
}
