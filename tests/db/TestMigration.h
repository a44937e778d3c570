#pragma once

#include "support/TestCase.h"

class TestMigration final : public TestCase {
    Q_OBJECT

private slots:
    void cleanup();
    void olderFilesAreBroughtUpToDate_data();
    void olderFilesAreBroughtUpToDate();
    void aMigratedFileHasTheSchemaOfANewOne();
    void aMigrationThatFailsLeavesTheFile_data();
    void aMigrationThatFailsLeavesTheFile();
    void withoutACopyNoMigrationBegins();
    void everyMigrationKeepsACopyOfItsOwn();
    void aNewerFileOpensWithOneWarning();
};
