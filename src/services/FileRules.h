#pragma once

#include <QStringList>

/// Which files the archive takes in, and how their sizes are written.
namespace FileRules {

/// The largest file that is archived, in bytes.
inline constexpr qint64 maxFileSize = qint64(20) * 1024 * 1024;

/// Lower case, without the dot.
QStringList acceptedExtensions();

/// For dialogs that choose files.
QString fileDialogFilter();

/// "512 B", "1.5 KB", "20.00 MB".
QString formatFileSize(qint64 bytes);

} // namespace FileRules
