#include "dialogs/pickers/PickerModel.h"

#include "core/ChineseOrder.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

// Equal records keep their order in both directions.
template <typename Key>
void sortByKeys(std::vector<qsizetype>& records, const std::vector<Key>& keys, Qt::SortOrder order)
{
    const auto less = [&](qsizetype a, qsizetype b) {
        return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
    };
    if (order == Qt::AscendingOrder)
        std::stable_sort(records.begin(), records.end(), less);
    else
        std::stable_sort(
            records.begin(), records.end(), [&](qsizetype a, qsizetype b) { return less(b, a); });
}

} // namespace

int PickerModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int PickerModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(headers().size());
}

QVariant PickerModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const qsizetype record = recordAt(index.row());
    if (index.column() == tickColumn)
        return tickData(record, role);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment(index.column()));
    return cell(record, index.column(), role);
}

QVariant PickerModel::tickData(qsizetype record, int role) const
{
    const bool ticked = m_ticked[static_cast<std::size_t>(record)];
    switch (role) {
    case Qt::CheckStateRole:
        return ticked ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleTextRole:
        return ticked ? u"已勾选"_s : u"未勾选"_s;
    default:
        return {};
    }
}

bool PickerModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || index.column() != tickColumn)
        return false;
    setRowsTicked({ index.row() }, value.toInt() == Qt::Checked);
    return true;
}

QVariant PickerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return headers().value(section);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment(section));
    return {};
}

Qt::ItemFlags PickerModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == tickColumn ? flags | Qt::ItemIsUserCheckable : flags;
}

Qt::Alignment PickerModel::alignment(int) const
{
    return Qt::AlignLeft | Qt::AlignVCenter;
}

void PickerModel::setRecordCount(qsizetype count)
{
    beginResetModel();
    m_order.resize(static_cast<std::size_t>(count));
    std::iota(m_order.begin(), m_order.end(), 0);
    m_ticked.assign(m_order.size(), false);
    m_tickedCount = 0;
    filter();
    endResetModel();
}

void PickerModel::sort(int column, Qt::SortOrder order)
{
    // From the order of the store, so that equal records always keep that one.
    std::vector<qsizetype> records(m_order.size());
    std::iota(records.begin(), records.end(), 0);
    if (column == tickColumn)
        std::stable_partition(records.begin(), records.end(), [&](qsizetype record) {
            return m_ticked[static_cast<std::size_t>(record)] == (order == Qt::AscendingOrder);
        });
    else if (column > tickColumn && !records.empty())
        sortByValues(records, column, order);
    beginResetModel();
    m_order = std::move(records);
    filter();
    endResetModel();
}

void PickerModel::sortByValues(
    std::vector<qsizetype>& records, int column, Qt::SortOrder order) const
{
    if (sortValue(0, column).typeId() == QMetaType::QString) {
        const QCollator collator = chineseCollator();
        std::vector<QCollatorSortKey> keys;
        keys.reserve(records.size());
        for (const qsizetype record : records)
            keys.push_back(collator.sortKey(sortValue(record, column).toString()));
        sortByKeys(records, keys, order);
    } else {
        std::vector<qint64> keys;
        keys.reserve(records.size());
        for (const qsizetype record : records)
            keys.push_back(sortValue(record, column).toLongLong());
        sortByKeys(records, keys, order);
    }
}

void PickerModel::setKeyword(const QString& keyword)
{
    const QString trimmed = keyword.trimmed();
    if (trimmed == m_keyword)
        return;
    beginResetModel();
    m_keyword = trimmed;
    filter();
    endResetModel();
    emit changed();
}

void PickerModel::filter()
{
    if (m_keyword.isEmpty()) {
        m_shown = m_order;
        return;
    }
    m_shown.clear();
    std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(m_shown),
        [this](qsizetype record) { return matches(record, m_keyword); });
}

void PickerModel::setTicked(const QSet<qint64>& ids)
{
    for (const qsizetype record : m_order)
        setRecordTicked(record, ids.contains(idOf(record)));
    announceTicks();
}

void PickerModel::setRowsTicked(const QList<int>& rows, bool ticked)
{
    for (const int row : rows)
        setRecordTicked(recordAt(row), ticked);
    announceTicks();
}

void PickerModel::tickAllShown()
{
    for (const qsizetype record : m_shown)
        setRecordTicked(record, true);
    announceTicks();
}

void PickerModel::untickAll()
{
    setTicked({});
}

bool PickerModel::isTicked(int row) const
{
    return m_ticked[static_cast<std::size_t>(recordAt(row))];
}

QList<qint64> PickerModel::tickedIds() const
{
    QList<qint64> ids;
    ids.reserve(m_tickedCount);
    for (const qsizetype record : m_order) {
        if (m_ticked[static_cast<std::size_t>(record)])
            ids += idOf(record);
    }
    return ids;
}

void PickerModel::setRecordTicked(qsizetype record, bool ticked)
{
    const auto place = static_cast<std::size_t>(record);
    if (m_ticked[place] == ticked)
        return;
    m_ticked[place] = ticked;
    m_tickedCount += ticked ? 1 : -1;
}

void PickerModel::announceTicks()
{
    if (!m_shown.empty())
        emit dataChanged(index(0, tickColumn), index(rowCount() - 1, tickColumn),
            { Qt::CheckStateRole, Qt::AccessibleTextRole });
    emit changed();
}
