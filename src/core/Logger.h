#pragma once

/// Sends every Qt log message to the daily files of the logs folder, besides to the handler that
/// was in force before. A line reads `yyyy-MM-dd HH:mm:ss LEVEL text`, warnings and errors with
/// the function that raised them in brackets.
namespace Logger {

/// Takes the place of the current message handler; the logs folder is read once. Does nothing
/// when already installed.
void install();

/// Writes what is queued, gives the message handler back and closes the file. Must run before
/// static objects die: lines are lost otherwise.
void finish();

/// Finishes the logger on every way out of a scope, installed or not.
class FinishGuard final {
public:
    FinishGuard() = default;
    ~FinishGuard() { finish(); }
    FinishGuard(const FinishGuard&) = delete;
    FinishGuard& operator=(const FinishGuard&) = delete;
};

} // namespace Logger
