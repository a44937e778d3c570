#include "DemoClock.h"

#include <atomic>

#ifdef Q_OS_LINUX
#include <ctime>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>
#endif

namespace {

// Below 0 until the clock is set: the real time.
constinit std::atomic<qint64> heldMs { -1 };

} // namespace

#ifdef Q_OS_LINUX

// A function of the executable goes before the C library's of the same name, for the shared
// libraries too.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): its headers' names are
// reserved.
extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const qint64 held = heldMs.load();
    if (clock != CLOCK_REALTIME || held < 0)
        return static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    *time = { .tv_sec = held / 1000, .tv_nsec = held % 1000 * 1'000'000 };
    return 0;
}

int gettimeofday(timeval* time, void*) noexcept
{
    timespec now {};
    const int status = clock_gettime(CLOCK_REALTIME, &now);
    *time = { .tv_sec = now.tv_sec, .tv_usec = now.tv_nsec / 1000 };
    return status;
}

time_t time(time_t* seconds) noexcept
{
    timespec now {};
    clock_gettime(CLOCK_REALTIME, &now);
    if (seconds)
        *seconds = now.tv_sec;
    return now.tv_sec;
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

#endif

namespace DemoClock {

QDate today()
{
    return { 2025, 12, 18 };
}

void set(const QDateTime& time)
{
    heldMs = time.toMSecsSinceEpoch();
}

void set(QDate day, int hour, int minute)
{
    set(QDateTime(day, QTime(hour, minute)));
}

bool isObeyed()
{
    return QDateTime::currentMSecsSinceEpoch() == heldMs.load();
}

} // namespace DemoClock
