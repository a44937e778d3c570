#pragma once

#include <QObject>
#include <QTest>

/// Base of every test class: each test function starts in an empty data directory and fails at
/// any Qt warning that it did not announce with QTest::ignoreMessage.
class TestCase : public QObject {
    Q_OBJECT

protected:
    /// Empties the data directory beside the test program and creates its folders anew.
    static void resetDataDirectory();

protected slots:
    void init();
};

/// The columns of a data table, named in the order of their types.
template <typename... Columns, typename... Names> void addColumns(Names... names)
{
    (QTest::addColumn<Columns>(names), ...);
}

/// A row of a data table; the values have the types of its columns.
template <typename... Values> void addCase(const char* name, const Values&... values)
{
    (QTest::newRow(name) << ... << values);
}

using TestRun = int (*)(int argc, char** argv);
void registerTest(TestRun run);

/// Runs all registered test classes; the number of failed functions is the exit status. A program
/// without any fails.
int runRegisteredTests(int argc, char** argv);

/// Adds a test class to its program: one static object beside the class.
template <typename Test> struct RegisteredTest {
    RegisteredTest()
    {
        registerTest([](int argc, char** argv) {
            Test test;
            return QTest::qExec(&test, argc, argv);
        });
    }
};
