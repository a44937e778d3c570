#include "support/TestCase.h"

#include "core/AppPaths.h"

#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// Inside a function: test classes register themselves before the globals of this file exist.
QList<TestRun>& registeredTests()
{
    static QList<TestRun> tests;
    return tests;
}

} // namespace

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

void registerTest(TestRun run)
{
    registeredTests().append(run);
}

int runRegisteredTests(int argc, char** argv)
{
    int failures = registeredTests().isEmpty() ? 1 : 0;
    for (const TestRun run : std::as_const(registeredTests()))
        failures += run(argc, argv);
    return failures;
}
