#pragma once

#include <QString>

/// Where everything lies that the program keeps: one data directory beside the executable, so
/// that program and records move together. Nothing is cached; every call asks where the
/// executable is now. All results are absolute with "/" separators unless told otherwise.
namespace AppPaths {

QString dataDir();
QString databasePath();
QString voucherAssetsDir();
QString exportsDir();
QString backupsDir();
QString autoBackupBeforeRestoreDir();
QString logsDir();

/// The lock that keeps a second start out of the same data directory.
QString instanceLockPath();

/// Creates the data directory and its folders where they are missing. Tries all of them even
/// after one failed; true only when every one exists at the end.
[[nodiscard]] bool ensureDirs();

/// The absolute path, with native separators, of a path as the database stores it: relative
/// paths count from the data directory. Empty stays empty.
QString toAbsolute(const QString& storedPath);

/// The form in which the database stores a path: relative to the data directory when the path
/// lies inside it (letter case ignored, as Windows does), absolute otherwise; always with "/".
/// Takes real paths only: a path that is already in stored form would count from the current
/// directory.
QString toStored(const QString& anyPath);

} // namespace AppPaths
