#pragma once

#include "services/backup/BackupPreview.h"
#include "services/backup/BackupProgress.h"
#include "services/backup/RestoreResult.h"

struct BackupResult {
    bool ok = false;
    QString folder; // absolute, where the backup lies when ok
    bool isComplete = false; // every voucher's file is known to be in it
    QString message; // Chinese, for the user; when ok empty, or what else went wrong
};

struct BackupCheck {
    bool ok = false;
    QString message; // Chinese, for the user, when not ok
};

/// Copies database and voucher folder into backup folders and brings them back. Works on the open
/// database, synchronously; the progress callback is called between files and must not start
/// another backup or restore.
class BackupService final {
public:
    explicit BackupService(BackupProgress::Callback progress = {});

    /// Makes a backup in a new folder in `parentFolder` and notes its time in the profile. After
    /// a failure nothing is left in the parent folder.
    [[nodiscard]] BackupResult backupTo(const QString& parentFolder);

    [[nodiscard]] static BackupCheck validateBackup(const QString& folder);

    /// What a backup folder holds. Reads its whole database and changes nothing in the folder.
    [[nodiscard]] static BackupPreview inspect(const QString& folder);

    /// Replaces database and voucher folder by a backup's, after a backup of the present ones in
    /// a new subfolder of the automatic backups. A failure leaves the present data in place and
    /// open. The database is closed and opened in between: what was read from it is out of date.
    [[nodiscard]] RestoreResult restoreFrom(const QString& folder);

private:
    BackupProgress::Callback m_progress;
};
