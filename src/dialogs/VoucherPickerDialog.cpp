#include "dialogs/VoucherPickerDialog.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

VoucherPickerDialog::VoucherPickerDialog(const QSet<qint64>&, QWidget* parent)
    : FormDialog(u"添加已归档凭证（可多选）"_s, parent)
{
    setObjectName(u"VoucherPickerDialog"_s);
    addRejectButton(u"取消"_s);
    connect(addPrimaryButton(u"确定添加"_s), &QPushButton::clicked, this, &QDialog::accept);
}

QList<qint64> VoucherPickerDialog::selectedIds() const
{
    return {};
}
