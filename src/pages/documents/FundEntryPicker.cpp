#include "pages/documents/FundEntryPicker.h"

#include "core/Money.h"
#include "db/LinkDao.h"
#include "db/TransactionDao.h"
#include "pages/documents/FundEntryModel.h"
#include "services/documents/DocumentRules.h"
#include "services/documents/FundSelection.h"
#include "widgets/EmptyState.h"
#include "widgets/TextRole.h"
#include "widgets/ViewStyle.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int tableHeight = 8 * ViewStyle::rowHeight + 4; // header, seven rows, frame

} // namespace

FundEntryPicker::FundEntryPicker(QWidget* parent)
    : QWidget(parent)
    , m_model(new FundEntryModel(this))
    , m_ownerFlows(new QCheckBox(u"仅股东往来"_s, this))
    , m_uncovered(new QCheckBox(u"仅未覆盖"_s, this))
    , m_all(new QCheckBox(u"全选"_s, this))
    , m_stack(new QStackedWidget(this))
    , m_table(new QTableView(this))
    , m_total(new QLabel(this))
    , m_capitals(new QLabel(this))
{
    setObjectName(u"FundEntryPicker"_s);
    buildTable();
    m_stack->addWidget(m_table);
    m_stack->addWidget(new EmptyState(u"ledger"_s, u"没有可选的流水"_s,
        u"当前方向下没有符合条件的流水。可以取消上方的筛选，或先在资金台账登记。"_s, m_stack));
    m_stack->setFixedHeight(tableHeight);

    m_total->setObjectName(u"fundTotal"_s);
    m_capitals->setWordWrap(true);
    setTextRole(m_total, TextRole::SectionTitle);
    setTextRole(m_capitals, TextRole::Hint);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(buildFilters());
    column->addWidget(m_stack);
    column->addWidget(m_total);
    column->addWidget(m_capitals);

    connect(m_model, &FundEntryModel::ticksChanged, this, &FundEntryPicker::onTicksChanged);
    updateView();
}

QLayout* FundEntryPicker::buildFilters()
{
    m_ownerFlows->setChecked(true);
    m_uncovered->setChecked(true);
    m_ownerFlows->setToolTip(u"只列出股东转入、公司转付股东和费用报销/归垫的流水"_s);
    m_uncovered->setToolTip(u"不列出已有往来决定书的流水"_s);
    auto* filters = new QHBoxLayout;
    filters->setSpacing(16);
    filters->addWidget(m_all);
    filters->addStretch();
    filters->addWidget(m_ownerFlows);
    filters->addWidget(m_uncovered);
    connect(m_ownerFlows, &QCheckBox::toggled, this, &FundEntryPicker::updateView);
    connect(m_uncovered, &QCheckBox::toggled, this, &FundEntryPicker::updateView);
    // From partly ticked the box goes to all, from all to none.
    connect(m_all, &QCheckBox::stateChanged, this,
        [this](int state) { m_model->tickShown(state != Qt::Unchecked); });
    return filters;
}

void FundEntryPicker::buildTable()
{
    ViewStyle::setUpTable(m_table, u"可选流水"_s);
    m_table->setObjectName(u"fundEntries"_s);
    m_table->setModel(m_model);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QHeaderView* header = m_table->horizontalHeader();
    header->setSectionResizeMode(FundEntryModel::Summary, QHeaderView::Stretch);
    m_table->setColumnWidth(FundEntryModel::Tick, 44);
    m_table->setColumnWidth(FundEntryModel::Date, 96);
    m_table->setColumnWidth(FundEntryModel::Counterparty, 84);
    m_table->setColumnWidth(FundEntryModel::Amount, 104);
    auto* space = new QShortcut(Qt::Key_Space, m_table);
    space->setContext(Qt::WidgetShortcut);
    connect(space, &QShortcut::activated, this, &FundEntryPicker::toggleSelectedRows);
}

bool FundEntryPicker::reload(QString* told)
{
    TransactionDao ledger;
    LinkDao links;
    const QList<Transaction> entries = ledger.search({});
    const QSet<qint64> covered = links.fundDecisionTransactionIds();
    // An unreadable ledger is no empty one: the rows and ticks stay as they were.
    for (const QString& error : { ledger.lastError(), links.lastError() }) {
        if (error.isEmpty())
            continue;
        *told = u"流水读取失败：%1"_s.arg(error);
        return false;
    }
    const qsizetype gone = m_model->setEntries(entries, covered);
    if (gone > 0)
        *told = u"此前勾选的 %1 笔流水已被删除，不再计入。"_s.arg(gone);
    return true;
}

const QList<Transaction>& FundEntryPicker::ledger() const
{
    return m_model->entries();
}

void FundEntryPicker::setDirection(Direction direction)
{
    m_direction = direction;
    updateView();
}

void FundEntryPicker::updateView()
{
    m_model->setView({ m_direction, m_ownerFlows->isChecked(), m_uncovered->isChecked() });
}

QList<Transaction> FundEntryPicker::chosen() const
{
    return FundSelections::inOrder(m_model->entries(), m_model->ticked(), m_direction);
}

const QSet<qint64>& FundEntryPicker::ticked() const
{
    return m_model->ticked();
}

void FundEntryPicker::setTicked(const QSet<qint64>& ids)
{
    m_model->setTicked(ids);
}

void FundEntryPicker::onTicksChanged()
{
    const int shown = m_model->rowCount();
    const int ticked = m_model->tickedRows();
    m_stack->setCurrentIndex(shown > 0 ? 0 : 1);
    {
        const QSignalBlocker silent(m_all);
        m_all->setEnabled(shown > 0);
        m_all->setTristate(ticked > 0 && ticked < shown);
        m_all->setCheckState(ticked == 0 ? Qt::Unchecked
                : ticked < shown         ? Qt::PartiallyChecked
                                         : Qt::Checked);
    }
    showTotal();
    emit changed();
}

void FundEntryPicker::showTotal()
{
    const QList<Transaction> entries = chosen();
    const auto total = DocumentRules::totalFen(entries);
    m_total->setText(u"已选 %1 笔，合计 %2 元"_s.arg(
        QString::number(entries.size()), total ? Money::format(*total) : u"超出范围的"_s));
    m_capitals->setText(u"大写：%1"_s.arg(total ? Money::toChineseUpper(*total) : u"—"_s));
}

void FundEntryPicker::toggleSelectedRows()
{
    const QModelIndex current = m_table->currentIndex();
    if (!current.isValid())
        return;
    const QModelIndex box = current.siblingAtColumn(FundEntryModel::Tick);
    const Qt::CheckState state
        = box.data(Qt::CheckStateRole).toInt() == Qt::Checked ? Qt::Unchecked : Qt::Checked;
    QModelIndexList rows = m_table->selectionModel()->selectedRows(FundEntryModel::Tick);
    if (rows.isEmpty())
        rows += box;
    for (const QModelIndex& row : rows)
        m_model->setData(row, state, Qt::CheckStateRole);
}
