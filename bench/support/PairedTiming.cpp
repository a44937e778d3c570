#include "support/PairedTiming.h"

#include "support/Timing.h"

void measurePair(
    benchmark::State& state, const std::function<void()>& ours, const std::function<void()>& raw)
{
    // Caches of both are filled before anything counts.
    ours();
    raw();
    std::vector<Seconds> oursTimes;
    std::vector<Seconds> rawTimes;
    bool oursFirst = true;
    for (auto _ : state) {
        if (!oursFirst)
            rawTimes.push_back(timeOf(raw));
        oursTimes.push_back(timeOf(ours));
        state.SetIterationTime(oursTimes.back().wall);
        if (oursFirst)
            rawTimes.push_back(timeOf(raw));
        oursFirst = !oursFirst;
    }
    const Seconds ourTime = medianOf(oursTimes);
    const Seconds rawTime = medianOf(rawTimes);
    state.counters["ours_ms"] = ourTime.wall * 1000;
    state.counters["raw_ms"] = rawTime.wall * 1000;
    state.counters["ratio"] = ourTime.wall / rawTime.wall;
    state.counters["cpu_ratio"] = ourTime.processor / rawTime.processor;
}
