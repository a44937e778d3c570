#pragma once

/// What the programs of measurement have in common.
namespace BenchRun {

/// Passes over what the program tells of its course: thousands of times that would bury the
/// figures. Warnings still show.
void keepQuiet();

/// Runs the registered benchmarks; the exit status.
int runAll(int argc, char** argv);

} // namespace BenchRun
