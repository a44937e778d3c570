#include "dialogs/VoucherAddDialog.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

VoucherAddDialog::VoucherAddDialog(const Preset&, QWidget* parent)
    : FormDialog(u"添加凭证"_s, parent)
{
    setObjectName(u"VoucherAddDialog"_s);
    addRejectButton(u"取消"_s);
    addPrimaryButton(u"保存入库"_s);
}
