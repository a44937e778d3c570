#pragma once

#include <QString>

#include <optional>

/// Cleans up after a restore that a crash or power failure interrupted.
namespace RestoreRepair {

/// Puts the old data back where the restore was not finished, and removes what finished or
/// abandoned ones left behind. Belongs between taking the instance lock and opening the database;
/// does nothing when there is nothing to repair. A problem is a Chinese text for the user, and
/// the program must not go on: nothing was removed, but the live data may be incomplete.
[[nodiscard]] std::optional<QString> run();

} // namespace RestoreRepair
