#pragma once

#include <QString>

struct RestoreResult {
    bool ok = false; // the program works on the restored data and should be restarted
    QString message; // Chinese, for the user, when not ok
    QString autoBackupFolder; // the copy of the replaced data; empty when it came to none
    /// False when neither the new nor the old data could be opened: the database is closed and
    /// the program must end. The next start puts the old data back.
    bool databaseOpen = true;
};
