#include "support/TestCase.h"
#include "theme/Theme.h"

#include <QApplication>
#include <QDir>

int main(int argc, char** argv)
{
    // Qt's file dialog keeps its state in the user's configuration.
    qputenv("XDG_CONFIG_HOME", QDir::tempPath().toLocal8Bit() + "/brixa-test");
    const QApplication app(argc, argv);
    Theme::instance().apply(ThemeMode::Light);
    return runRegisteredTests(argc, argv);
}
