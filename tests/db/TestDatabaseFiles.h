#pragma once

#include "support/TestCase.h"

class TestDatabaseFiles final : public TestCase {
    Q_OBJECT

private slots:
    void cleanup();
    void damagedFilesAreRefusedAndKept_data();
    void damagedFilesAreRefusedAndKept();
    void anEmptyFileIsANewOne();
    void aFolderInTheFilesPlaceIsAnError();
    void aFileThatAnotherProcessHoldsIsRefusedAndKept();
    void aReadOnlyFileCanBeRead_data();
    void aReadOnlyFileCanBeRead();
    void aReadOnlyOlderFileIsNotMigrated();
    void aFileWhoseVersionCannotBeReadIsRefused();
    void theFolderMayHaveAnyName();
    void openingAgainReplacesTheConnection();
    void afterClosingNothingIsRegistered();
};
