#include "dialogs/pickers/TxPickerDialog.h"

#include "db/TransactionDao.h"
#include "dialogs/pickers/PickerPane.h"
#include "dialogs/pickers/TxPickerModel.h"
#include "widgets/RiskCellDelegate.h"
#include "widgets/TextRole.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace {

void layOutColumns(QTableView* table)
{
    struct Width {
        int column;
        int pixels;
    };
    constexpr auto widths = std::to_array<Width>({
        { TxPickerModel::Date, 104 },
        { TxPickerModel::Summary, 240 },
        { TxPickerModel::Counterparty, 180 },
        { TxPickerModel::Amount, 130 },
        { TxPickerModel::CategoryName, 150 },
    });
    for (const Width& width : widths)
        table->setColumnWidth(width.column, width.pixels);
    table->horizontalHeader()->setSectionResizeMode(TxPickerModel::Summary, QHeaderView::Stretch);
    table->setColumnWidth(TxPickerModel::Risk, 112);
    table->setItemDelegateForColumn(TxPickerModel::Risk, new RiskCellDelegate(table));
}

PickerPane::Texts textsFor(const QString& error)
{
    return { .tableName = u"资金流水"_s,
        .searchHint = u"搜索摘要、对方名称、日期或金额"_s,
        .countPattern = u"已选 %1 笔"_s,
        .iconName = u"ledger"_s,
        .emptyTitle = u"还没有流水"_s,
        .emptyText = u"先在资金台账中登记流水，再来关联。"_s,
        .failureTitle = u"流水读取失败"_s,
        .failure = error };
}

} // namespace

TxPickerDialog::TxPickerDialog(const QList<qint64>& chosen, QWidget* parent)
    : FormDialog(u"选择关联流水（可多选）"_s, parent)
{
    setObjectName(u"TxPickerDialog"_s);
    TransactionDao entries;
    m_model = new TxPickerModel(entries.search({}), this);
    m_model->setTicked({ chosen.begin(), chosen.end() });

    auto* hint = new QLabel(u"勾选需要关联的流水，可跨页全选当前列表："_s, this);
    hint->setTextFormat(Qt::PlainText);
    setTextRole(hint, TextRole::Hint);
    body()->addWidget(hint);
    auto* pane = new PickerPane(m_model, textsFor(entries.lastError()), this);
    layOutColumns(pane->table());
    body()->addWidget(pane, 1);

    addRejectButton(u"取消"_s);
    QPushButton* choose = addPrimaryButton(u"确定选择"_s);
    // Nothing ticked in a list that could not be read is no choice.
    choose->setEnabled(entries.lastError().isEmpty());
    connect(choose, &QPushButton::clicked, this, &QDialog::accept);
    resize(1040, 640);
    pane->showFirstTicked();
}

QList<qint64> TxPickerDialog::selectedIds() const
{
    return m_model->tickedIds();
}
