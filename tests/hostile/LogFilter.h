#pragma once

#include <QRegularExpression>
#include <QStringList>

/// Lets warnings that begin like one of the patterns pass, however often they come; the others
/// fail the test as ever.
class LogFilter final {
public:
    explicit LogFilter(const QStringList& patterns);
    ~LogFilter();
    LogFilter(const LogFilter&) = delete;
    LogFilter& operator=(const LogFilter&) = delete;
};
