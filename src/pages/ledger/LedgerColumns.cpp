#include "pages/ledger/LedgerColumns.h"

#include "pages/ledger/LedgerCellDelegate.h"
#include "pages/ledger/LedgerModel.h"
#include "widgets/ColumnWidths.h"

#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>

#include <array>

namespace {

// In the order of the columns, for 13 px text. In the smallest window there is room for the heads
// and the buttons; what a larger one has goes to the texts.
constexpr auto widths = std::to_array<ColumnWidths::Width>({
    { 84, 0 },
    { 84, 4 },
    { 48, 0 },
    { 108, 0 },
    { 70, 0 },
    { 70, 4 },
    { 70, 0 },
    { 70, 4 },
    { 70, 2 },
    { 50, 0 },
    { 92, 0 },
    { LedgerCellDelegate::actionsWidth, 0 },
});
static_assert(widths.size() == LedgerModel::ColumnCount);

} // namespace

LedgerColumns::LedgerColumns(QTableView* table)
    : QObject(table)
    , m_table(table)
{
    QHeaderView* header = table->horizontalHeader();
    header->setMinimumSectionSize(40);
    header->setStretchLastSection(false);
    table->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionResized, this, [this] {
        if (!m_fitting)
            m_setByUser = true;
    });
    fit();
}

bool LedgerColumns::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && !m_setByUser)
        fit();
    return QObject::eventFilter(watched, event);
}

void LedgerColumns::fit()
{
    const QScopedValueRollback fitting(m_fitting, true);
    ColumnWidths::share(m_table, widths, m_table->viewport()->width());
}
