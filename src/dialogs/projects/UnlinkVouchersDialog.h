#pragma once

#include "db/Voucher.h"
#include "dialogs/FormDialog.h"

#include <QList>

class QListWidget;
class QPushButton;

/// Lets the user tick those of a contract's vouchers whose tie to it is to be undone.
class UnlinkVouchersDialog final : public FormDialog {
    Q_OBJECT

public:
    UnlinkVouchersDialog(
        const QString& contractName, const QList<Voucher>& linked, QWidget* parent = nullptr);

    QList<qint64> selectedIds() const;

private:
    void updateButton();

    QListWidget* m_list = nullptr;
    QPushButton* m_unlink = nullptr;
};
