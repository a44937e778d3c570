#pragma once

#include <functional>
#include <vector>

/// Seconds by the clock on the wall and of the processor, all threads of the program together.
struct Seconds {
    double wall = 0;
    double processor = 0;
};

/// How long the job took this time.
Seconds timeOf(const std::function<void()>& job);

/// The medians of both.
Seconds medianOf(const std::vector<Seconds>& times);

/// The medians of a job that is done again and again; what prepares it is not counted. One run
/// before the first that counts fills the caches.
Seconds medianOf(
    int repetitions, const std::function<void()>& prepare, const std::function<void()>& job);
