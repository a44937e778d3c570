#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

/// Turns the operating system's wish that the program ends (log-out, shutdown, Ctrl+C in a
/// terminal) into an orderly end: open dialogs are declined, the window closes, the database and
/// the log are closed. On systems without such signals it does nothing.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    /// Whoever started the program may be gone with the other end of its standard error: a line
    /// that is written there must not end the program. Belongs before anything that may warn.
    static void ignoreBrokenPipes();

    /// Whether one has been seen by an event loop. That loop ends; whoever would start another one
    /// has to ask first, or the wish is forgotten.
    [[nodiscard]] static bool haveCome();

    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
