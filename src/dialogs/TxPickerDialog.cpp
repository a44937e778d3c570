#include "dialogs/TxPickerDialog.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

TxPickerDialog::TxPickerDialog(const QList<qint64>& chosen, QWidget* parent)
    : FormDialog(u"选择关联流水（可多选）"_s, parent)
    , m_chosen(chosen)
{
    setObjectName(u"TxPickerDialog"_s);
    addRejectButton(u"取消"_s);
    connect(addPrimaryButton(u"确定选择"_s), &QPushButton::clicked, this, &QDialog::accept);
}

QList<qint64> TxPickerDialog::selectedIds() const
{
    return m_chosen;
}
