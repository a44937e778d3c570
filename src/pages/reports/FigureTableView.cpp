#include "pages/reports/FigureTableView.h"

#include "widgets/ViewStyle.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QHeaderView>
#include <QKeyEvent>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

class FigureModel final : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    void setTable(const FigureTable& table)
    {
        beginResetModel();
        m_table = table;
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_table.rows.size());
    }

    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_table.header.size());
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid())
            return {};
        if (role == Qt::DisplayRole)
            return m_table.rows.at(index.row()).at(index.column());
        if (role == Qt::TextAlignmentRole)
            return alignmentOf(index.column());
        if (role == Qt::FontRole && m_table.endsWithTotal && index.row() == rowCount() - 1) {
            QFont bold;
            bold.setPixelSize(13);
            bold.setBold(true);
            return bold;
        }
        return {};
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal)
            return {};
        if (role == Qt::DisplayRole)
            return m_table.header.value(section);
        if (role == Qt::TextAlignmentRole)
            return alignmentOf(section);
        return {};
    }

private:
    static QVariant alignmentOf(int column)
    {
        return QVariant::fromValue(
            (column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    }

    FigureTable m_table;
};

FigureTableView::FigureTableView(const QString& accessibleName, QWidget* parent)
    : QTableView(parent)
    , m_model(new FigureModel(this))
{
    setObjectName(u"FigureTableView"_s);
    ViewStyle::setUpTable(this, accessibleName);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setModel(m_model);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionsClickable(false);
    connect(this, &QTableView::doubleClicked, this,
        [this](const QModelIndex& index) { emit rowActivated(index.row()); });
}

void FigureTableView::setTable(const FigureTable& table)
{
    m_model->setTable(table);
    setFixedHeight(horizontalHeader()->sizeHint().height()
        + ViewStyle::rowHeight * m_model->rowCount() + 2 * 2);
    fitColumns();
}

void FigureTableView::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && currentIndex().isValid())
        emit rowActivated(currentIndex().row());
    else
        QTableView::keyPressEvent(event);
}

void FigureTableView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    fitColumns();
}

void FigureTableView::wheelEvent(QWheelEvent* event)
{
    // Nothing to scroll here; the page takes it.
    event->ignore();
}

void FigureTableView::fitColumns()
{
    const int columns = m_model->columnCount();
    if (columns <= 0)
        return;
    // Names need more room than figures, and counts less than amounts.
    const auto weightOf = [](int column) { return column == 0 ? 6 : column == 1 ? 2 : 4; };
    int weights = 0;
    for (int column = 0; column < columns; ++column)
        weights += weightOf(column);
    int left = viewport()->width();
    for (int column = 0; column < columns - 1; ++column) {
        const int width = viewport()->width() * weightOf(column) / weights;
        setColumnWidth(column, width);
        left -= width;
    }
    setColumnWidth(columns - 1, left);
}
