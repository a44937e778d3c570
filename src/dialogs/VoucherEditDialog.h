#pragma once

#include "dialogs/FormDialog.h"

/// Changes the description and the links of an archived voucher. Accepted only after it was saved.
class VoucherEditDialog final : public FormDialog {
    Q_OBJECT

public:
    explicit VoucherEditDialog(qint64 voucherId, QWidget* parent = nullptr);

private:
    qint64 m_voucherId;
};
