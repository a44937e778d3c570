#pragma once

#include "dialogs/FormDialog.h"

struct BackupPreview;

/// What a chosen backup holds beside what the program holds now, before the question whether to
/// restore it. Accepted when the user wants to go on.
class RestorePreviewDialog final : public FormDialog {
    Q_OBJECT

public:
    RestorePreviewDialog(
        const QString& folder, const BackupPreview& preview, QWidget* parent = nullptr);

private:
    void addWarnings(const BackupPreview& preview);
    void addComparison(const BackupPreview& preview);
};
