#pragma once

#include <QString>

#include <filesystem>
#include <system_error>

/// The few operations on files whose order on the disk decides whether records survive a power
/// failure. They take native paths, so that names which are no valid text are kept as they are,
/// and never throw.
namespace DiskFiles {

std::filesystem::path native(const QString& path);
QString text(const std::filesystem::path& path);

/// Something has this name, be it a link that leads nowhere.
bool exists(const std::filesystem::path& path);

/// Writes the bytes of a file into a new one, which its owner can read and write; fails when the
/// name is taken. A link as source is followed. Nothing is flushed: `syncTree` does that once.
[[nodiscard]] std::error_code copyFile(
    const std::filesystem::path& source, const std::filesystem::path& target);

/// Makes the names in a folder durable: what was created in, renamed in or removed from it.
[[nodiscard]] std::error_code syncFolder(const std::filesystem::path& folder);

/// Makes everything in a folder and below durable.
[[nodiscard]] std::error_code syncTree(const std::filesystem::path& folder);

} // namespace DiskFiles
