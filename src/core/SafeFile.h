#pragma once

#include <QByteArray>
#include <QString>

namespace SafeFile {

/// Writes the bytes beside `path` and renames them into place, so that the path holds either the
/// whole new content or what it held before. False on any failure, a full disk included; the
/// operating system's reason goes to `error`.
[[nodiscard]] bool write(const QString& path, const QByteArray& bytes, QString* error = nullptr);

/// Makes the new name of a file that was created or renamed survive a power failure: some file
/// systems would keep a row of the database and lose the file that it names. For files that rows
/// name; an export can simply be made again. Best effort.
void makeNameDurable(const QString& path);

} // namespace SafeFile
