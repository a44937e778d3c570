#pragma once

#include "services/backup/BackupProgress.h"
#include "services/backup/FolderCopy.h"
#include "services/backup/RestoreResult.h"

/// One restore of a valid backup folder, from the safety copy of the present data to the reopened
/// database. Runs once.
class Restore final {
public:
    /// The callback must outlive the restore.
    Restore(const QString& folder, const BackupProgress::Callback& callback);

    [[nodiscard]] RestoreResult run();

private:
    using Problem = std::optional<QString>;

    Problem backUpPresent();
    Problem stage();
    Problem copyToStage();
    Problem replace();
    Problem openRestored();
    Problem returnToPresent();

    QString m_folder;
    FolderCopy::Listing m_present;
    FolderCopy::Listing m_backup;
    BackupProgress m_progress;
    RestoreResult m_result;
};
