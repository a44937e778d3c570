#include "pages/ledger/LedgerTable.h"

#include "pages/ledger/LedgerAmountDelegate.h"
#include "pages/ledger/LedgerCellDelegate.h"
#include "pages/ledger/LedgerColumns.h"
#include "pages/ledger/LedgerModel.h"
#include "pages/ledger/LedgerSort.h"
#include "services/OwnerFlows.h"
#include "widgets/RiskCellDelegate.h"
#include "widgets/ViewStyle.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// A cell of a pasted table ends at a tab or a line break.
QString pasted(const QModelIndex& index)
{
    return index.data().toString().simplified();
}

bool hasOwnClick(int column)
{
    return column == LedgerModel::Vouchers || column == LedgerModel::Risk
        || column == LedgerModel::Actions;
}

} // namespace

LedgerTable::LedgerTable(LedgerModel* ledger, QWidget* parent)
    : QTableView(parent)
    , m_ledger(ledger)
    , m_sort(new LedgerSort(ledger, this))
{
    setObjectName(u"ledgerTable"_s);
    ViewStyle::setUpTable(this, u"资金流水"_s);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setMouseTracking(true);
    setModel(m_sort);
    horizontalHeader()->setSortIndicatorClearable(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    connect(horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, [this](int column) {
        // Buttons have no order.
        if (column == LedgerModel::Actions)
            horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    });
    addDelegates();
    addCommands();
    new LedgerColumns(this);
    connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!hasOwnClick(index.column()))
            emit editRequested(idAt(index));
    });
}

void LedgerTable::addDelegates()
{
    auto* cells = new LedgerCellDelegate(this);
    setItemDelegateForColumn(LedgerModel::Amount, new LedgerAmountDelegate(this));
    setItemDelegateForColumn(LedgerModel::Vouchers, cells);
    setItemDelegateForColumn(LedgerModel::Risk, new RiskCellDelegate(this));
    setItemDelegateForColumn(LedgerModel::Actions, cells);
    // Queued: the dialogs that follow must not run inside the handling of the click.
    connect(cells, &LedgerCellDelegate::editRequested, this, &LedgerTable::editRequested,
        Qt::QueuedConnection);
    connect(cells, &LedgerCellDelegate::vouchersRequested, this, &LedgerTable::editRequested,
        Qt::QueuedConnection);
    connect(cells, &LedgerCellDelegate::deleteRequested, this, &LedgerTable::deleteRequested,
        Qt::QueuedConnection);
    connect(
        cells, &LedgerCellDelegate::documentRequested, this,
        [this](qint64 id) { emit documentRequested({ id }); }, Qt::QueuedConnection);
    connect(this, &QAbstractItemView::clicked, this, &LedgerTable::onClicked);
}

void LedgerTable::onClicked(const QModelIndex& index)
{
    // With Ctrl and Shift rows are chosen.
    if (index.column() != LedgerModel::Risk || QApplication::keyboardModifiers() != Qt::NoModifier)
        return;
    QMetaObject::invokeMethod(
        this, [this, id = idAt(index)] { emit reviewRequested(id); }, Qt::QueuedConnection);
}

void LedgerTable::addCommands()
{
    addEntryCommand(u"编辑"_s, { Qt::Key_Return, Qt::Key_Enter }, &LedgerTable::editRequested);
    // These for the whole window: after an entry was saved the focus may be in the navigation.
    addEntryCommand(u"复制为新流水"_s, { Qt::CTRL | Qt::Key_D }, &LedgerTable::copyAsNewRequested)
        ->setShortcutContext(Qt::WindowShortcut);
    addEntryCommand(u"人工复核…"_s, { Qt::CTRL | Qt::Key_R }, &LedgerTable::reviewRequested)
        ->setShortcutContext(Qt::WindowShortcut);
    QAction* decide = addCommand(u"生成往来决定书"_s, { Qt::CTRL | Qt::Key_G });
    decide->setShortcutContext(Qt::WindowShortcut);
    connect(decide, &QAction::triggered, this, &LedgerTable::requestDocument);
    addSeparator();
    connect(addCommand(u"复制单元格"_s, { Qt::CTRL | Qt::SHIFT | Qt::Key_C }), &QAction::triggered,
        this, &LedgerTable::copyCell);
    connect(addCommand(u"复制行"_s, { QKeySequence::Copy }), &QAction::triggered, this,
        &LedgerTable::copyRows);
    addSeparator();
    addEntryCommand(u"删除"_s, { QKeySequence::Delete }, &LedgerTable::deleteRequested);
}

QAction* LedgerTable::addCommand(const QString& text, const QList<QKeySequence>& keys)
{
    auto* command = new QAction(text, this);
    command->setShortcuts(keys);
    command->setShortcutContext(Qt::WidgetShortcut);
    command->setShortcutVisibleInContextMenu(true);
    addAction(command);
    return command;
}

QAction* LedgerTable::addEntryCommand(
    const QString& text, const QList<QKeySequence>& keys, void (LedgerTable::*request)(qint64))
{
    QAction* command = addCommand(text, keys);
    m_entryCommands += command;
    connect(command, &QAction::triggered, this, [this, request] {
        const QModelIndexList rows = selectedRowIndexes();
        // Which of several is meant nobody can know.
        if (rows.size() == 1)
            (this->*request)(idAt(rows.constFirst()));
    });
    return command;
}

void LedgerTable::addSeparator()
{
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    addAction(separator);
}

void LedgerTable::contextMenuEvent(QContextMenuEvent* event)
{
    const qsizetype count = selectedRowIndexes().size();
    if (count == 0)
        return;
    for (QAction* command : std::as_const(m_entryCommands))
        command->setEnabled(count == 1);
    const QPoint where = event->reason() == QContextMenuEvent::Keyboard
        ? viewport()->mapToGlobal(visualRect(currentIndex()).center())
        : event->globalPos();
    QMenu menu(this);
    menu.addActions(actions());
    menu.exec(where);
    // Disabled commands would not answer their keys any more.
    for (QAction* command : std::as_const(m_entryCommands))
        command->setEnabled(true);
}

void LedgerTable::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    const bool byKey
        = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (!byKey || selectionModel()->hasSelection() || m_sort->rowCount() == 0)
        return;
    // Otherwise the keys of the commands would find no entry.
    const QModelIndex current = currentIndex();
    selectionModel()->setCurrentIndex(current.isValid() ? current : m_sort->index(0, 0),
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void LedgerTable::mouseMoveEvent(QMouseEvent* event)
{
    QTableView::mouseMoveEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    viewport()->setCursor(
        index.isValid() && hasOwnClick(index.column()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void LedgerTable::requestDocument()
{
    const QList<qint64> selected = selectedIds();
    QList<qint64> flows = selected;
    flows.removeIf([this](qint64 id) {
        return !OwnerFlows::isTransferOrRefund(m_ledger->entryAt(m_ledger->rowOf(id)).category);
    });
    // A decision is about money between company and owner; the form says what else cannot be in it.
    const QList<qint64>& asked = flows.isEmpty() ? selected : flows;
    if (!asked.isEmpty())
        emit documentRequested(asked);
}

void LedgerTable::copyRows()
{
    QStringList lines;
    for (const QModelIndex& row : selectedRowIndexes()) {
        QStringList cells;
        for (int column = 0; column < LedgerModel::Actions; ++column)
            cells += pasted(row.siblingAtColumn(column));
        lines += cells.join(u'\t');
    }
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines.join(u'\n'));
}

void LedgerTable::copyCell()
{
    if (currentIndex().isValid())
        QApplication::clipboard()->setText(currentIndex().data().toString());
}

QModelIndexList LedgerTable::selectedRowIndexes() const
{
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    return rows;
}

QList<qint64> LedgerTable::selectedIds() const
{
    QList<qint64> ids;
    for (const QModelIndex& row : selectedRowIndexes())
        ids += idAt(row);
    return ids;
}

qint64 LedgerTable::idAt(const QModelIndex& index) const
{
    return index.data(LedgerModel::IdRole).toLongLong();
}

QModelIndex LedgerTable::indexOf(qint64 id, int column) const
{
    const int row = m_ledger->rowOf(id);
    return row < 0 ? QModelIndex() : m_sort->mapFromSource(m_ledger->index(row, column));
}

LedgerTable::Position LedgerTable::position() const
{
    return { .selectedIds = selectedIds(),
        .currentId = currentIndex().isValid() ? idAt(currentIndex()) : 0,
        .currentRow = currentIndex().row(),
        .currentColumn = std::max(currentIndex().column(), 0),
        .scroll = verticalScrollBar()->value() };
}

void LedgerTable::restore(const Position& position)
{
    QList<int> rows;
    for (const qint64 id : position.selectedIds) {
        if (const QModelIndex index = indexOf(id); index.isValid())
            rows += index.row();
    }
    std::sort(rows.begin(), rows.end());
    QModelIndex current = indexOf(position.currentId, position.currentColumn);
    if (!current.isValid() && position.currentRow >= 0)
        current = m_sort->index(
            std::min(position.currentRow, m_sort->rowCount() - 1), position.currentColumn);
    if (rows.isEmpty() && current.isValid() && !position.selectedIds.isEmpty())
        rows += current.row();

    // Neighbours go into one range: a selection of single rows is slow.
    QItemSelection selection;
    for (qsizetype i = 0; i < rows.size();) {
        qsizetype last = i;
        while (last + 1 < rows.size() && rows.at(last + 1) == rows.at(last) + 1)
            ++last;
        selection.append(QItemSelectionRange(m_sort->index(rows.at(i), 0),
            m_sort->index(rows.at(last), LedgerModel::ColumnCount - 1)));
        i = last + 1;
    }
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    verticalScrollBar()->setValue(position.scroll);
}

bool LedgerTable::selectEntry(qint64 id)
{
    const QModelIndex index = indexOf(id);
    if (!index.isValid())
        return false;
    selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index, QAbstractItemView::PositionAtCenter);
    return true;
}
