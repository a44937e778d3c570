#pragma once

#include "selfcheck/SelfCheckReport.h"

#include <QObject>

#include <functional>

class Findings;

/// Tries the program's rules and stores against the open database and looks for damage in what is
/// stored. Leaves rows, sequences and the user's files as they are; blocks for less than half a
/// second. Used from the window's thread, between other work on the database.
class SelfCheck final : public QObject {
    Q_OBJECT

public:
    struct Suite {
        QString name; // Chinese
        std::function<void(Findings&)> check;
        bool writesRows = false; // runs in a transaction that is rolled back
    };

    static SelfCheck& instance();

    /// The suite that tries the windows, which this layer does not know.
    void setWindowSuite(const Suite& suite);

    /// Runs every suite, logs the reports, and tells the rest of the program.
    SelfCheckReport run();

    /// Runs the next suite alone, so that the window can answer between them. Whether it was the
    /// last one, with which the check is complete.
    bool advance();

    /// Of the last run since the start of the program.
    static SelfCheckReport lastResult();

signals:
    void finished();

private:
    SelfCheck() = default;
    void conclude();

    SelfCheckReport m_running;
    SelfCheckReport m_last;
    Suite m_windowSuite;
};
