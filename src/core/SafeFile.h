#pragma once

#include <QByteArray>
#include <QString>

namespace SafeFile {

/// Writes the bytes beside `path` and renames them into place, so that the path holds either the
/// whole new content or what it held before. False on any failure, a full disk included; the
/// operating system's reason goes to `error`.
[[nodiscard]] bool write(const QString& path, const QByteArray& bytes, QString* error = nullptr);

/// Makes the new name of a file that was created or renamed survive a power failure: some file
/// systems would keep a row of the database and lose the file that it names. Best effort; nothing
/// to do on systems whose renames are durable.
void makeNameDurable(const QString& path);

} // namespace SafeFile
