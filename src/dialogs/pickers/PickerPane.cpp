#include "dialogs/pickers/PickerPane.h"

#include "dialogs/pickers/PickerModel.h"
#include "widgets/ButtonRole.h"
#include "widgets/EmptyState.h"
#include "widgets/RowDelegate.h"
#include "widgets/TextRole.h"
#include "widgets/ViewStyle.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int tickColumnWidth = 64;

// The whole cell ticks, not the small box alone; the pane sees to that.
class TickDelegate final : public RowDelegate {
public:
    using RowDelegate::RowDelegate;

    bool editorEvent(
        QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&, const QModelIndex&) override
    {
        return false;
    }
};

} // namespace

PickerPane::PickerPane(PickerModel* model, const Texts& texts, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_countPattern(texts.countPattern)
{
    m_model->setParent(this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(buildHead(texts));
    m_stack = new QStackedWidget(this);
    m_stack->addWidget(m_table = buildTable(texts));
    m_noMatch = new EmptyState(u"search"_s, u"没有符合条件的记录"_s,
        u"换一个关键字，或清空搜索框；已勾选的记录不受搜索影响。"_s, this);
    m_stack->addWidget(m_noMatch);
    const bool failed = !texts.failure.isEmpty();
    m_noRecords = new EmptyState(texts.iconName, failed ? texts.failureTitle : texts.emptyTitle,
        failed ? texts.failure : texts.emptyText, this);
    m_stack->addWidget(m_noRecords);
    column->addWidget(m_stack, 1);
    connectSignals();
    update();
}

QWidget* PickerPane::buildHead(const Texts& texts)
{
    auto* head = new QWidget(this);
    auto* line = new QHBoxLayout(head);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    m_search = new QLineEdit(head);
    m_search->setObjectName(u"pickerSearch"_s);
    m_search->setAccessibleName(u"搜索"_s);
    m_search->setPlaceholderText(texts.searchHint);
    m_search->setClearButtonEnabled(true);
    m_tickAll = makeButton(u"全选当前列表"_s, ButtonRole::Default, head);
    m_untickAll = makeButton(u"清空勾选"_s, ButtonRole::Default, head);
    m_count = new QLabel(head);
    m_count->setObjectName(u"pickerCount"_s);
    m_count->setTextFormat(Qt::PlainText);
    line->addWidget(m_search, 1);
    line->addWidget(m_tickAll);
    line->addWidget(m_untickAll);
    line->addWidget(m_count);
    return head;
}

QTableView* PickerPane::buildTable(const Texts& texts)
{
    auto* table = new QTableView(m_stack);
    table->setObjectName(u"pickerTable"_s);
    ViewStyle::setUpTable(table, texts.tableName);
    table->setItemDelegateForColumn(PickerModel::tickColumn, new TickDelegate(table));
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setModel(m_model);
    table->setColumnWidth(PickerModel::tickColumn, tickColumnWidth);
    QHeaderView* header = table->horizontalHeader();
    header->setSortIndicatorClearable(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    table->setSortingEnabled(true);
    table->installEventFilter(this);
    return table;
}

void PickerPane::connectSignals()
{
    connect(m_search, &QLineEdit::textChanged, m_model, &PickerModel::setKeyword);
    connect(m_model, &PickerModel::changed, this, &PickerPane::update);
    connect(m_tickAll, &QPushButton::clicked, m_model, &PickerModel::tickAllShown);
    connect(m_untickAll, &QPushButton::clicked, m_model, &PickerModel::untickAll);
    connect(m_table, &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() == PickerModel::tickColumn)
            toggle(index.row());
    });
    connect(m_table, &QTableView::doubleClicked, this,
        [this](const QModelIndex& index) { toggle(index.row()); });
    m_search->installEventFilter(this);
}

bool PickerPane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == m_table && (key == Qt::Key_Space || key == Qt::Key_Select)) {
        toggleSelected();
        return true;
    }
    // From the search straight into what it found.
    if (watched == m_search && key == Qt::Key_Down && m_model->rowCount() > 0) {
        m_table->setFocus();
        m_table->selectRow(0);
        return true;
    }
    return false;
}

void PickerPane::toggle(int row)
{
    m_model->setRowsTicked({ row }, !m_model->isTicked(row));
}

void PickerPane::toggleSelected()
{
    const QModelIndex current = m_table->currentIndex();
    if (!current.isValid())
        return;
    QList<int> rows { current.row() };
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
        rows += index.row();
    m_model->setRowsTicked(rows, !m_model->isTicked(current.row()));
}

void PickerPane::showFirstTicked()
{
    for (int row = 0; m_model->tickedCount() > 0 && row < m_model->rowCount(); ++row) {
        if (m_model->isTicked(row)) {
            m_table->setCurrentIndex(m_model->index(row, PickerModel::tickColumn));
            m_table->scrollTo(m_table->currentIndex(), QAbstractItemView::PositionAtCenter);
            return;
        }
    }
}

void PickerPane::update()
{
    const bool hasRecords = m_model->recordCount() > 0;
    const bool hasRows = m_model->rowCount() > 0;
    QWidget* shown = m_table;
    if (!hasRows)
        shown = hasRecords ? m_noMatch : m_noRecords;
    m_stack->setCurrentWidget(shown);
    m_search->setEnabled(hasRecords);
    m_tickAll->setEnabled(hasRows);
    m_untickAll->setEnabled(m_model->tickedCount() > 0);
    m_count->setText(m_countPattern.arg(m_model->tickedCount()));
}
