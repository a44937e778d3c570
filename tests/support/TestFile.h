#pragma once

#include <QByteArray>
#include <QString>

/// Files as a test makes and reads them.
namespace TestFile {

/// The bytes of a file; "(unreadable)" when there are none to read.
QByteArray bytesOf(const QString& path);

/// Writes a file of these bytes; false when that fails.
[[nodiscard]] bool put(const QString& path, const QByteArray& bytes);

} // namespace TestFile
