#pragma once

#include <QByteArray>
#include <QString>

namespace SafeFile {

/// Writes the bytes beside `path` and renames them into place, so that the path holds either the
/// whole new content or what it held before. False on any failure, a full disk included; the
/// operating system's reason goes to `error`.
[[nodiscard]] bool write(const QString& path, const QByteArray& bytes, QString* error = nullptr);

} // namespace SafeFile
