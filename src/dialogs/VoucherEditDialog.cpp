#include "dialogs/VoucherEditDialog.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

VoucherEditDialog::VoucherEditDialog(qint64 voucherId, QWidget* parent)
    : FormDialog(u"编辑凭证"_s, parent)
    , m_voucherId(voucherId)
{
    setObjectName(u"VoucherEditDialog"_s);
    addRejectButton(u"取消"_s);
    addPrimaryButton(u"保存"_s);
}
