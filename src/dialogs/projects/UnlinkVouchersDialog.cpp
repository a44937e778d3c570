#include "dialogs/projects/UnlinkVouchersDialog.h"

#include "core/TextRules.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

UnlinkVouchersDialog::UnlinkVouchersDialog(
    const QString& contractName, const QList<Voucher>& linked, QWidget* parent)
    : FormDialog(u"解除关联"_s, parent)
    , m_list(new QListWidget(this))
{
    setObjectName(u"UnlinkVouchersDialog"_s);
    auto* text = new QLabel(
        u"勾选要与合同「%1」解除关联的凭证。凭证文件仍保留在凭证归档库中。"_s.arg(contractName),
        this);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    body()->addWidget(text);

    m_list->setAccessibleName(u"合同的关联凭证"_s);
    for (const Voucher& voucher : linked) {
        const QString date = voucher.voucherDate.isValid()
            ? TextRules::dateText(voucher.voucherDate)
            : u"无日期"_s;
        auto* item = new QListWidgetItem(
            u"%1 · %2 · %3"_s.arg(date, labelOf(voucher.voucherType), voucher.name), m_list);
        item->setData(Qt::UserRole, voucher.id);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    // The end of a long name gives way.
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setCurrentRow(0);
    body()->addWidget(m_list, 1);

    addRejectButton(u"取消"_s);
    m_unlink = addPrimaryButton(u"解除关联"_s, ButtonRole::Danger);
    connect(m_unlink, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_list, &QListWidget::itemChanged, this, &UnlinkVouchersDialog::updateButton);
    updateButton();
    m_list->setFocus();
    resize(480, 360);
}

QList<qint64> UnlinkVouchersDialog::selectedIds() const
{
    QList<qint64> ids;
    for (int row = 0; row < m_list->count(); ++row) {
        const QListWidgetItem* item = m_list->item(row);
        if (item->checkState() == Qt::Checked)
            ids += item->data(Qt::UserRole).toLongLong();
    }
    return ids;
}

void UnlinkVouchersDialog::updateButton()
{
    m_unlink->setEnabled(!selectedIds().isEmpty());
}
