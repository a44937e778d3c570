#include "app/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <array>
#include <csignal>
#include <unistd.h>

namespace {

// A signal handler may do no more than write a byte; the event loop reads it at the other end.
std::array<int, 2> wakePipe { -1, -1 };
bool requested = false;

void wakeEventLoop(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(wakePipe[1], &byte, 1);
}

} // namespace

void TerminationSignals::ignoreBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

bool TerminationSignals::haveCome()
{
    return requested;
}

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent)
{
    if (pipe(wakePipe.data()) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [] {
        char byte = 0;
        if (read(wakePipe[0], &byte, 1) != 1)
            return;
        requested = true;
        QCoreApplication::exit(0);
    });
    for (const int signal : { SIGTERM, SIGINT, SIGHUP })
        std::signal(signal, wakeEventLoop);
}

TerminationSignals::~TerminationSignals()
{
    for (const int signal : { SIGTERM, SIGINT, SIGHUP })
        std::signal(signal, SIG_DFL);
    m_notifier.reset(); // before the pipe that it watches
    for (int& end : wakePipe) {
        if (end >= 0)
            close(end);
        end = -1;
    }
}

#else

void TerminationSignals::ignoreBrokenPipes() { }

bool TerminationSignals::haveCome()
{
    return false;
}

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent)
{
}

TerminationSignals::~TerminationSignals() = default;

#endif
