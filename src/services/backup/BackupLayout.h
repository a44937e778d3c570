#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

/// Names in a backup folder and of the folder itself. The data directory uses the same names for
/// the database and the voucher folder.
namespace BackupLayout {

QString databaseName();
QString voucherFolderName();

QString databaseIn(const QString& folder);
QString vouchersIn(const QString& folder);
QString manifestIn(const QString& folder);

/// Whether the folder has the file of a voucher's stored path; false as well for a path that leads
/// elsewhere.
bool holdsVoucher(const QString& folder, const QString& storedPath);

/// "brixa_backup_yyyyMMdd_HHmmss" in the parent folder.
QString folderFor(const QString& parent, const QDateTime& time);

/// Creates that folder, with "_2", "_3" and so on up to "_999" where the name is taken. Its path;
/// nothing when none could be created.
std::optional<QString> createFolder(const QString& parent, const QDateTime& time);

} // namespace BackupLayout
