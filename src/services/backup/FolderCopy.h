#pragma once

#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

/// Copies of whole folders. Problems are Chinese texts for the user with the path in question;
/// nothing means success.
namespace FolderCopy {

/// What a folder holds, hidden files included, with paths relative to it; a folder stands before
/// what it contains. Links to folders are not entered and not listed: they may lead back up or to
/// a whole disk. Links to files count as the files, those that lead nowhere too, so that copying
/// them fails instead of losing a voucher silently. Pipes and devices are left out. An entry that
/// cannot be examined is a problem.
struct Listing {
    std::vector<std::filesystem::path> folders;
    std::vector<std::filesystem::path> files;
    QStringList leftOut; // paths of the links, pipes and devices
    std::optional<QString> problem;

    int fileCount() const { return static_cast<int>(files.size()); }
};

/// A folder that does not exist lists as empty.
Listing list(const QString& folder);

/// Bytes of all files together.
qint64 sizeOf(const QString& folder, const Listing& listing);

/// Copies what was listed into `target`, which is created where it is missing; a file in the
/// place of a copied one is replaced. `copied` is called after every file. Stops at the first
/// problem and leaves what was copied. Nothing is flushed to the disk.
[[nodiscard]] std::optional<QString> copy(const QString& source, const Listing& listing,
    const QString& target, const std::function<void()>& copied);

/// Removes a file or a whole folder; links in it are removed, not what they lead to. A name that
/// nothing has is no problem.
[[nodiscard]] std::optional<QString> remove(const QString& path);

} // namespace FolderCopy
