#include "support/TestCase.h"
#include "theme/Theme.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    Theme::instance().apply(ThemeMode::Light);
    return runRegisteredTests(argc, argv);
}
