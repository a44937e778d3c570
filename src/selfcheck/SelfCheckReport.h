#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

/// What one suite found.
struct SelfCheckResult {
    QString name; // Chinese
    bool ok = false;
    QString message; // Chinese, plain: "正常" or what is wrong
    qint64 ms = 0;
};

/// What one run of the self-check found.
struct SelfCheckReport {
    QDateTime finishedAt; // invalid: none has run yet
    QList<SelfCheckResult> suites;

    bool hasRun() const { return finishedAt.isValid(); }
    qsizetype failures() const;
    qint64 ms() const;
};

/// A line per suite, for the log.
QString logText(const QList<SelfCheckResult>& suites);
