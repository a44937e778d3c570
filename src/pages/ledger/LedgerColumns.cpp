#include "pages/ledger/LedgerColumns.h"

#include "pages/ledger/LedgerCellDelegate.h"
#include "pages/ledger/LedgerModel.h"

#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>

#include <algorithm>
#include <array>

namespace {

struct ColumnWidth {
    int narrowest;
    int share; // of what is left over
};

// In the order of the columns, for 13 px text. In the smallest window there is room for the heads
// and the buttons; what a larger one has goes to the texts.
constexpr auto widths = std::to_array<ColumnWidth>({
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
    int left = m_table->viewport()->width();
    int shares = 0;
    for (const ColumnWidth& width : widths) {
        left -= width.narrowest;
        shares += width.share;
    }
    left = std::max(left, 0);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const ColumnWidth& width = widths.at(i);
        // What rounding leaves goes to the next share, so that the last column ends at the border.
        const int extra = shares > 0 ? left * width.share / shares : 0;
        left -= extra;
        shares -= width.share;
        m_table->setColumnWidth(static_cast<int>(i), width.narrowest + extra);
    }
}
