#include "pages/projects/DetailTable.h"

#include "widgets/ViewStyle.h"

#include <QHeaderView>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace {

// The focus ring has its place outside of the rows.
constexpr int frame = 4;

} // namespace

DetailTable::DetailTable(const QString& accessibleName, QAbstractItemModel* model,
    const QList<ColumnWidths::Width>& widths, int mostRows, QWidget* parent)
    : QTableView(parent)
    , m_widths(widths)
    , m_mostRows(mostRows)
{
    ViewStyle::setUpTable(this, accessibleName);
    setModel(model);
    setSelectionMode(SingleSelection);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        if (!m_fitting)
            m_setByUser = true;
    });
    fit();
}

qint64 DetailTable::currentId() const
{
    return currentIndex().data(Qt::UserRole).toLongLong();
}

void DetailTable::restore(qint64 id)
{
    fit();
    const QModelIndexList found
        = model()->match(model()->index(0, 0), Qt::UserRole, id, 1, Qt::MatchExactly);
    if (id > 0 && !found.isEmpty())
        setCurrentIndex(found.first());
}

void DetailTable::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        fit();
}

void DetailTable::fit()
{
    const int rows = model()->rowCount();
    setVisible(rows > 0);
    const int side = rows > m_mostRows ? verticalScrollBar()->sizeHint().width() : 0;
    const int room = width() - frame - side;
    if (!m_setByUser) {
        const QScopedValueRollback fitting(m_fitting, true);
        ColumnWidths::share(this, m_widths, room);
    }
    const bool scrollsSideways = horizontalHeader()->length() > room;
    const int bar = scrollsSideways ? horizontalScrollBar()->sizeHint().height() : 0;
    setFixedHeight((std::min(rows, m_mostRows) + 1) * ViewStyle::rowHeight + frame + bar);
}
