#include "support/TestCase.h"

#include "core/AppPaths.h"

#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

void TestCase::resetDataDirectory()
{
    QDir dir(AppPaths::dataDir());
    // Not an assertion macro: those return from the function that holds them.
    if (!dir.removeRecursively() || !AppPaths::ensureDirs())
        qFatal("The test's data directory cannot be made anew");
}

void TestCase::init()
{
    // The offscreen platform says so itself when a window asks for what it cannot do.
    QTest::failOnWarning(QRegularExpression(u"^(?!.*does not support)"_s));
    resetDataDirectory();
}
