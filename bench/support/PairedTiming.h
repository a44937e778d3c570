#pragma once

#include <benchmark/benchmark.h>

#include <functional>

/// Runs our own way and the raw one by turns in the same loop, so that whatever else the machine
/// does meets both. Reports the medians in milliseconds and their ratio, by the clock on the wall
/// and by processor time; the benchmark's own time is ours. Run with `UseManualTime`.
void measurePair(
    benchmark::State& state, const std::function<void()>& ours, const std::function<void()>& raw);
