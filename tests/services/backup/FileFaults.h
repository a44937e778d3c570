#pragma once

#include <string>
#include <vector>

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

struct Call {
    std::string name; // of the C library's function
    std::string path; // the file or folder that it changes or makes durable
    std::string target; // of renames and links: the new name
};

/// The calls counted since `arm`: number n stands at n - 1.
const std::vector<Call>& calls();

} // namespace FileFaults
