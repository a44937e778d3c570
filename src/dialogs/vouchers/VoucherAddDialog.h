#pragma once

#include "dialogs/FormDialog.h"
#include "services/vouchers/VoucherBatch.h"

#include <QList>
#include <QStringList>

class VoucherFields;
class VoucherLinkFields;
class VoucherQueuePanel;

/// Archives files: one description and one set of links for all of them. Files are chosen, dropped
/// onto the dialog or pasted.
class VoucherAddDialog final : public FormDialog {
    Q_OBJECT

public:
    /// What the dialog opens with.
    struct Preset {
        qint64 projectId = 0; // 0: none
        QList<qint64> transactionIds;
        QStringList files; // absolute paths
    };

    explicit VoucherAddDialog(const Preset& preset, QWidget* parent = nullptr);

    /// What was archived so far. The dialog ends as accepted whenever there is something, also when
    /// it is closed after some of the files failed.
    QList<qint64> importedIds() const { return m_importedIds; }

    void done(int result) override;

protected:
    bool hasUnsavedInput() const override;

private:
    QWidget* buildQueue();
    QWidget* buildFields();
    void onQueueChanged();
    void onSave();
    VoucherBatch::Outcome import(const VoucherDescription& description);

    VoucherQueuePanel* m_queue;
    VoucherFields* m_fields;
    VoucherLinkFields* m_links;
    QString m_givenName; // taken from a file, not entered
    QList<qint64> m_importedIds;
};
