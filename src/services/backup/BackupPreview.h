#pragma once

#include "services/backup/BackupManifest.h"

#include <QDate>
#include <QStringList>

/// What a backup holds, for the question whether to restore it.
struct BackupPreview {
    bool ok = false; // a valid backup folder; nothing else is filled in otherwise
    QString message; // why not, Chinese

    BackupManifest manifest; // what it says of itself
    int voucherFiles = 0; // really there
    qint64 bytes = 0; // database and voucher files

    QString companyName;
    std::optional<int> entries; // rows; nothing when they cannot be read
    std::optional<int> vouchers;
    std::optional<int> documents;
    QDate newestEntry; // invalid when there is none

    QStringList warnings; // Chinese, for the user, before a restore
};
