#include "support/PairedTiming.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

namespace {

struct Times {
    std::vector<double> wall; // seconds
    std::vector<double> processor;
};

double wallSeconds()
{
    using Clock = std::chrono::steady_clock;
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double timeOnce(const std::function<void()>& job, Times& times)
{
    const double wall = wallSeconds();
    const double processor = processorSeconds();
    job();
    times.processor.push_back(processorSeconds() - processor);
    times.wall.push_back(wallSeconds() - wall);
    return times.wall.back();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void measurePair(
    benchmark::State& state, const std::function<void()>& ours, const std::function<void()>& raw)
{
    // Caches of both are filled before anything counts.
    ours();
    raw();
    Times oursTimes;
    Times rawTimes;
    bool oursFirst = true;
    for (auto _ : state) {
        if (!oursFirst)
            timeOnce(raw, rawTimes);
        state.SetIterationTime(timeOnce(ours, oursTimes));
        if (oursFirst)
            timeOnce(raw, rawTimes);
        oursFirst = !oursFirst;
    }
    state.counters["ours_ms"] = median(oursTimes.wall) * 1000;
    state.counters["raw_ms"] = median(rawTimes.wall) * 1000;
    state.counters["ratio"] = median(oursTimes.wall) / median(rawTimes.wall);
    state.counters["cpu_ratio"] = median(oursTimes.processor) / median(rawTimes.processor);
}
