#pragma once

#include "support/DatabaseTestCase.h"

class TestBackupPreview final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void invalidFoldersAreRefused_data();
    void invalidFoldersAreRefused();
    void thePreviewTellsWhatIsInside();
    void thePreviewLeavesTheFolderAsItIs();
    void thePreviewWarns_data();
    void thePreviewWarns();
    void thePreviewWarnsOfALog();
    void thePreviewWarnsOfOtherDatabases_data();
    void thePreviewWarnsOfOtherDatabases();
};
