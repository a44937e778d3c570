#include "dialogs/TestPasswordDialogs.h"
#include "dialogs/TestProfileDialogs.h"
#include "dialogs/TestSettingsPage.h"
#include "theme/Theme.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    Theme::instance().apply(ThemeMode::Light);
    return runTests<TestPasswordDialogs, TestProfileDialogs, TestSettingsPage>(argc, argv);
}
