#pragma once

#include "support/DatabaseTestCase.h"

#include <QTemporaryDir>

class TestRestore final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theBackupReplacesEverything();
    void aRestoreCanBeTakenBack();
    void olderVersionsAreBroughtUpToDate_data();
    void olderVersionsAreBroughtUpToDate();
    void aBackupWithoutVoucherFolderGivesAnEmptyOne();
    void aBackupAmongTheLiveVouchersIsRefused();
    void aLinkedVoucherFolderKeepsItsTarget();
    void anotherReaderDoesNotMixTheData();
    void unfitDatabasesChangeNothing_data();
    void unfitDatabasesChangeNothing();
    void aDatabaseThatCannotBeMigratedChangesNothing();
    void obstaclesChangeNothing_data();
    void obstaclesChangeNothing();
    void aFullDiskChangesNothing_data();
    void aFullDiskChangesNothing();
    void aDeletedDatabaseStaysOpen();

private:
    void expectUnchanged(const QString& safetyCopy);

    std::unique_ptr<QTemporaryDir> m_target;
    QString m_backup; // of other data than the live ones
    QString m_newContent;
    QString m_oldContent;
};
