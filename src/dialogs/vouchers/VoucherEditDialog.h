#pragma once

#include "db/EntityLink.h"
#include "dialogs/FormDialog.h"
#include "services/vouchers/VoucherService.h"

#include <QList>
#include <QSet>

class VoucherFields;
class VoucherLinkFields;

/// Changes the description and the links of an archived voucher. Accepted only after it was saved.
class VoucherEditDialog final : public FormDialog {
    Q_OBJECT

public:
    explicit VoucherEditDialog(qint64 voucherId, QWidget* parent = nullptr);

    /// Tells the reason and returns `Rejected` when the voucher cannot be read.
    int exec() override;

protected:
    bool hasUnsavedInput() const override;

private:
    void buildForm();
    bool load();
    void showLinks(const QList<EntityLink>& links);
    void showRemark(const QStringList& dropped);
    void onSave();

    const qint64 m_voucherId;
    VoucherDescription m_shown;
    QSet<qint64> m_entriesBefore; // that it is linked to until it is saved
    QString m_loadProblem; // Chinese
    VoucherFields* m_fields;
    VoucherLinkFields* m_links;
};
