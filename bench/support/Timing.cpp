#include "support/Timing.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace {

Seconds now()
{
    using Clock = std::chrono::steady_clock;
    return { std::chrono::duration<double>(Clock::now().time_since_epoch()).count(),
        static_cast<double>(std::clock()) / CLOCKS_PER_SEC };
}

double median(const std::vector<Seconds>& times, double Seconds::*clock)
{
    std::vector<double> values;
    for (const Seconds& time : times)
        values.push_back(time.*clock);
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

Seconds timeOf(const std::function<void()>& job)
{
    const Seconds begin = now();
    job();
    const Seconds end = now();
    return { end.wall - begin.wall, end.processor - begin.processor };
}

Seconds medianOf(const std::vector<Seconds>& times)
{
    return { median(times, &Seconds::wall), median(times, &Seconds::processor) };
}

Seconds medianOf(
    int repetitions, const std::function<void()>& prepare, const std::function<void()>& job)
{
    std::vector<Seconds> times;
    for (int i = 0; i <= repetitions; ++i) {
        prepare();
        times.push_back(timeOf(job));
    }
    times.erase(times.begin());
    return medianOf(times);
}
