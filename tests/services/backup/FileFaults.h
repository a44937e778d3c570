#pragma once

/// Counts the system calls by which this process changes files, those of SQLite and Qt included,
/// and at the n-th of them kills the process or lets the call, or that and all later ones, fail as
/// a dying disk would. Flushing is only counted: a killed process loses nothing that it has
/// written.
namespace FileFaults {

enum class Effect { CountOnly, Kill, Fail, FailFromThere };

/// Begins to count; the first call is number 1.
void arm(Effect effect, int step = 0);

/// Stops; the number of calls counted.
int disarm();

} // namespace FileFaults
