#pragma once

#include "pages/settings/SettingsCard.h"

class Banner;
struct RestoreResult;

/// Making backups and bringing one back.
class BackupCard final : public SettingsCard {
    Q_OBJECT

public:
    explicit BackupCard(QWidget* parent = nullptr);

    void showProfile(const CompanyProfile& profile) override;

    /// Tells the user what became of a restore and asks for what has to follow.
    void tellOfRestore(const RestoreResult& result);

signals:
    /// The database was replaced by a backup's: the program is to start anew.
    void restartRequested();
    /// Neither the backup's database nor the one before could be opened: the program must end.
    void endRequested();

private:
    void onBackUp();
    void onRestore();
    /// A folder that the user agreed to restore from; empty when it came to none.
    QString chooseBackup();
    void restoreFrom(const QString& folder);

    QLabel* m_last;
    Banner* m_warning;
};
