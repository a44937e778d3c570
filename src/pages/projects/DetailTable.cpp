#include "pages/projects/DetailTable.h"

#include "widgets/ViewStyle.h"

#include <QHeaderView>
#include <QResizeEvent>
#include <QScrollBar>

#include <algorithm>

namespace {

// Of the column that takes the room that is left.
constexpr int narrowestColumn = 92;
// The focus ring has its place outside of the rows.
constexpr int frame = 4;

} // namespace

DetailTable::DetailTable(const QString& accessibleName, QAbstractItemModel* model,
    const QList<int>& widths, int mostRows, QWidget* parent)
    : QTableView(parent)
    , m_widths(widths)
    , m_mostRows(mostRows)
{
    ViewStyle::setUpTable(this, accessibleName);
    setModel(model);
    setSelectionMode(SingleSelection);
    for (int column = 0; column < widths.size(); ++column)
        setColumnWidth(column, widths.at(column) > 0 ? widths.at(column) : narrowestColumn);
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
    const auto open = static_cast<int>(m_widths.indexOf(0));
    const int others = horizontalHeader()->length() - columnWidth(open);
    setColumnWidth(open, std::max(narrowestColumn, room - others));
    const bool scrollsSideways = others + narrowestColumn > room;
    const int bar = scrollsSideways ? horizontalScrollBar()->sizeHint().height() : 0;
    setFixedHeight((std::min(rows, m_mostRows) + 1) * ViewStyle::rowHeight + frame + bar);
}
