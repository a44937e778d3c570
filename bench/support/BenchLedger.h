#pragma once

#include <QString>

class RawLedger;

/// Two files with the same ledger: one open as the program's database, one for the raw side.
namespace BenchLedger {

/// Makes the ledger of this size the current one. The program's file was written without planner
/// statistics, as files from elsewhere come, before the program opened it; the raw side's file
/// was analysed. Both have been evaluated once. Files of an earlier size are removed.
RawLedger& use(int entries);

/// Closes both and removes their files.
void close();

} // namespace BenchLedger
