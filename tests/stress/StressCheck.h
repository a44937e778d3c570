#pragma once

#include <QString>
#include <QStringList>

/// What the next start finds after a kill.
struct StressFindings {
    QStringList problems; // empty when nothing was lost, mixed or left half-done
    int levelsRepaired = 0; // 1 when the evaluation was behind and the start caught up with it
    int documentsRepaired = 0; // PDFs put back
    int restoresRepaired = 0; // 1 when an interrupted restore was taken back
    int filesReported = 0; // PDFs and leftovers without a row, as the program reports them
    int copiesReported = 0; // voucher files without a row
    int unfinishedBackups = 0; // folders that are recognised as no backup
};

namespace StressCheck {

/// What the killed process told, and the signature of the prepared backup.
struct Claims {
    QStringList lines;
    QString prepared;
};

/// Opens the data the way the start of the program does; the reason when that fails.
[[nodiscard]] QString start(StressFindings* findings = nullptr);

/// Starts on what is left and examines everything. Removes the backups it has examined.
[[nodiscard]] StressFindings examine(const Claims& claims, const QString& backupTarget);

} // namespace StressCheck
