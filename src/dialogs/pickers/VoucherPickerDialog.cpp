#include "dialogs/pickers/VoucherPickerDialog.h"

#include "db/VoucherDao.h"
#include "dialogs/pickers/PickerPane.h"
#include "dialogs/pickers/VoucherPickerModel.h"
#include "widgets/ThumbnailDelegate.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize thumbnailSize(56, 44);
constexpr int rowHeight = 56;

void layOutColumns(QTableView* table)
{
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->setColumnWidth(VoucherPickerModel::Thumbnail, thumbnailSize.width() + 24);
    table->setColumnWidth(VoucherPickerModel::Type, 130);
    table->setColumnWidth(VoucherPickerModel::Date, 112);
    table->horizontalHeader()->setSectionResizeMode(VoucherPickerModel::Name, QHeaderView::Stretch);
    table->setItemDelegateForColumn(
        VoucherPickerModel::Thumbnail, new ThumbnailDelegate(thumbnailSize, table));
}

PickerPane::Texts textsFor(bool archiveIsEmpty, const QString& error)
{
    return { .tableName = u"已归档凭证"_s,
        .searchHint = u"搜索名称、原文件名、类型、日期或备注"_s,
        .countPattern = u"已选 %1 张"_s,
        .iconName = u"vouchers"_s,
        .emptyTitle = u"没有可添加的凭证"_s,
        .emptyText = archiveIsEmpty
            ? u"凭证库为空，请先使用「从本地添加新凭证」上传文件"_s
            : u"凭证库中的凭证都已添加；新的文件请使用「从本地添加新凭证」上传。"_s,
        .failureTitle = u"凭证读取失败"_s,
        .failure = error };
}

} // namespace

VoucherPickerDialog::VoucherPickerDialog(const QSet<qint64>& excluded, QWidget* parent)
    : FormDialog(u"添加已归档凭证（可多选）"_s, parent)
{
    setObjectName(u"VoucherPickerDialog"_s);
    VoucherDao dao;
    QList<Voucher> vouchers = dao.search({});
    const bool archiveIsEmpty = vouchers.isEmpty();
    vouchers.removeIf([&](const Voucher& voucher) { return excluded.contains(voucher.id); });
    m_model = new VoucherPickerModel(vouchers, this);
    auto* pane = new PickerPane(m_model, textsFor(archiveIsEmpty, dao.lastError()), this);
    layOutColumns(pane->table());
    body()->addWidget(pane, 1);

    addRejectButton(u"取消"_s);
    connect(addPrimaryButton(u"确定添加"_s), &QPushButton::clicked, this, &QDialog::accept);
    resize(800, 600);
}

QList<qint64> VoucherPickerDialog::selectedIds() const
{
    return m_model->tickedIds();
}
