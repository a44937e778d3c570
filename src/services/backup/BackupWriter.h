#pragma once

#include "services/backup/BackupManifest.h"
#include "services/backup/FolderCopy.h"

#include <QDateTime>

class BackupProgress;

/// Fills a new backup folder from the open database and the live voucher folder. Removes the
/// folder again when it is destroyed before the backup was completed.
class BackupWriter final {
public:
    BackupWriter(QString folder, const FolderCopy::Listing& vouchers, BackupProgress& progress);
    ~BackupWriter();
    BackupWriter(const BackupWriter&) = delete;
    BackupWriter& operator=(const BackupWriter&) = delete;

    /// Empties the write-ahead log into the live database file. A problem is a Chinese text, here
    /// and below; nothing means success.
    [[nodiscard]] std::optional<QString> checkpoint();

    /// Database, vouchers and, once those are safely on the disk, the manifest.
    [[nodiscard]] std::optional<QString> complete(BackupManifest::Kind kind, const QDateTime& time);

private:
    std::optional<QString> copyDatabase();
    std::optional<QString> copyVouchers();
    std::optional<QString> writeManifest(BackupManifest::Kind kind, const QDateTime& time);

    QString m_folder;
    const FolderCopy::Listing& m_vouchers;
    BackupProgress& m_progress;
    bool m_complete = false;
};
