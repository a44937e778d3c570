#include "pages/vouchers/VoucherTable.h"

#include "pages/vouchers/VoucherListModel.h"
#include "widgets/LinkCellDelegate.h"
#include "widgets/RowCommands.h"
#include "widgets/ThumbnailDelegate.h"
#include "widgets/ViewStyle.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QSortFilterProxyModel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize thumbnailSize(56, 44);
constexpr int pictureRowHeight = 52;
constexpr int narrowestColumn = 72;

// Equal vouchers keep the order of the search, which is also what is shown while no column is
// chosen.
class VoucherSort final : public QSortFilterProxyModel {
public:
    VoucherSort(VoucherListModel* model, QObject* parent)
        : QSortFilterProxyModel(parent)
        , m_model(model)
    {
        setSourceModel(model);
    }

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        return m_model->isLess(left.row(), right.row(), left.column());
    }

private:
    VoucherListModel* m_model;
};

} // namespace

VoucherTable::VoucherTable(QWidget* parent)
    : QTableView(parent)
    , m_model(new VoucherListModel(this))
    , m_sort(new VoucherSort(m_model, this))
{
    setObjectName(u"voucherTable"_s);
    ViewStyle::setUpTable(this, u"凭证列表"_s);
    setSelectionMode(SingleSelection);
    setModel(m_sort);
    setUpColumns();
    connectClicks();
    addCommands();
    horizontalHeader()->setSortIndicatorClearable(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    connect(horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, [this](int column) {
        // Buttons have no order.
        if (column == VoucherListModel::Actions)
            horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    });
}

void VoucherTable::setUpColumns()
{
    verticalHeader()->setDefaultSectionSize(pictureRowHeight);
    auto* buttons = new LinkCellDelegate(this);
    setItemDelegateForColumn(VoucherListModel::Picture, new ThumbnailDelegate(thumbnailSize, this));
    setItemDelegateForColumn(VoucherListModel::Actions, buttons);
    connect(buttons, &LinkCellDelegate::triggered, this, &VoucherTable::onActionTriggered);

    QHeaderView* header = horizontalHeader();
    header->setMinimumSectionSize(narrowestColumn);
    header->resizeSection(VoucherListModel::Picture, thumbnailSize.width() + 16);
    header->resizeSection(VoucherListModel::Type, 96);
    header->resizeSection(VoucherListModel::Date, 92);
    header->resizeSection(VoucherListModel::Size, 80);
    header->resizeSection(VoucherListModel::CreatedAt, 140);
    header->resizeSection(VoucherListModel::Actions,
        LinkCellDelegate::widthFor(this, VoucherListModel::actionTexts()));
    header->setSectionResizeMode(VoucherListModel::Name, QHeaderView::Stretch);
    header->setSectionResizeMode(VoucherListModel::Links, QHeaderView::Stretch);
}

void VoucherTable::connectClicks()
{
    // Queued: what follows is a dialog, and the view is in the middle of its own event.
    connect(
        this, &QAbstractItemView::clicked, this,
        [this](const QModelIndex& index) {
            if (index.column() == VoucherListModel::Picture)
                emit quickPreviewRequested(idAt(index));
        },
        Qt::QueuedConnection);
    connect(
        this, &QAbstractItemView::doubleClicked, this,
        [this](const QModelIndex& index) {
            if (index.column() != VoucherListModel::Picture
                && index.column() != VoucherListModel::Actions)
                emit editRequested(idAt(index));
        },
        Qt::QueuedConnection);
}

void VoucherTable::addCommands()
{
    auto* commands = new RowCommands(this);
    const auto add = [&](const QString& text, const QList<QKeySequence>& keys, Request request) {
        commands->add(text, keys,
            [this, request](const QModelIndex& index) { emit(this->*request)(idAt(index)); });
    };
    add(u"快速预览"_s, { Qt::Key_Space }, &VoucherTable::quickPreviewRequested);
    add(u"预览（用默认程序打开）"_s, { Qt::CTRL | Qt::Key_O }, &VoucherTable::previewRequested);
    add(u"在文件夹中显示"_s, { Qt::CTRL | Qt::SHIFT | Qt::Key_O }, &VoucherTable::folderRequested);
    add(u"编辑"_s, { Qt::Key_Return, Qt::Key_Enter }, &VoucherTable::editRequested);
    add(u"删除"_s, { QKeySequence::Delete }, &VoucherTable::deleteRequested);
}

void VoucherTable::onActionTriggered(const QModelIndex& index, int action)
{
    const qint64 id = idAt(index);
    switch (static_cast<VoucherListModel::Action>(action)) {
    case VoucherListModel::Action::Preview:
        return emit previewRequested(id);
    case VoucherListModel::Action::Folder:
        return emit folderRequested(id);
    case VoucherListModel::Action::Edit:
        return emit editRequested(id);
    case VoucherListModel::Action::Remove:
        return emit deleteRequested(id);
    }
}

qint64 VoucherTable::idAt(const QModelIndex& index)
{
    return index.data(VoucherListModel::IdRole).toLongLong();
}

QModelIndex VoucherTable::indexOf(qint64 voucherId, int column) const
{
    const int row = m_model->rowOf(voucherId);
    return row < 0 ? QModelIndex() : m_sort->mapFromSource(m_model->index(row, column));
}

void VoucherTable::setVouchers(const QList<VoucherCardData>& vouchers)
{
    const QModelIndex before = currentIndex();
    const qint64 id = idAt(before);
    const int row = before.row();
    const int column = std::max(before.column(), 0);
    const int place = verticalScrollBar()->value();
    m_model->setVouchers(vouchers);
    QModelIndex current = indexOf(id, column);
    if (!current.isValid() && row >= 0)
        current = m_sort->index(std::min(row, m_sort->rowCount() - 1), column);
    setCurrentIndex(current);
    verticalScrollBar()->setValue(place);
}

QList<VoucherCardData> VoucherTable::vouchers() const
{
    QList<VoucherCardData> shown;
    shown.reserve(m_sort->rowCount());
    for (int row = 0; row < m_sort->rowCount(); ++row)
        shown += m_model->at(m_sort->mapToSource(m_sort->index(row, 0)).row());
    return shown;
}

void VoucherTable::selectVoucher(qint64 voucherId)
{
    const QModelIndex index = indexOf(voucherId, VoucherListModel::Name);
    if (!index.isValid())
        return;
    setCurrentIndex(index);
    scrollTo(index);
}

void VoucherTable::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    if (event->reason() == Qt::MouseFocusReason || selectionModel()->hasSelection())
        return;
    // The row that the keys act on must be one that is marked.
    setCurrentIndex(
        currentIndex().isValid() ? currentIndex() : m_sort->index(0, VoucherListModel::Name));
}
