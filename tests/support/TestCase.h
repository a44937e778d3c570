#pragma once

#include <QObject>
#include <QtTest>

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

/// Runs the test classes one after the other; the number of failed functions is the exit status.
template <typename... Tests> int runTests(int argc, char** argv)
{
    int failures = 0;
    const auto run = [&](auto&& test) { failures += QTest::qExec(&test, argc, argv); };
    (run(Tests()), ...);
    return failures;
}
