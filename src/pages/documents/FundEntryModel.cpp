#include "pages/documents/FundEntryModel.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "services/OwnerFlows.h"
#include "theme/Theme.h"
#include "widgets/AmountInk.h"
#include "widgets/ColumnHeads.h"

#include <QBrush>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, FundEntryModel::ColumnCount> headers { u"选", u"日期", u"摘要",
    u"对方名称", u"金额（元）" };

} // namespace

qsizetype FundEntryModel::setEntries(const QList<Transaction>& entries, const QSet<qint64>& covered)
{
    QSet<qint64> present;
    for (const Transaction& entry : entries)
        present.insert(entry.id);
    const QSet<qint64> gone = m_ticked - present;
    m_ticked -= gone;
    m_entries = entries;
    m_covered = covered;
    rebuild();
    return gone.size();
}

void FundEntryModel::setView(const View& view)
{
    m_view = view;
    rebuild();
}

void FundEntryModel::setTicked(const QSet<qint64>& ids)
{
    m_ticked = ids;
    rebuild();
}

void FundEntryModel::tickShown(bool ticked)
{
    for (int row = 0; row < rowCount(); ++row) {
        if (ticked)
            m_ticked.insert(entryAt(row).id);
        else
            m_ticked.remove(entryAt(row).id);
    }
    if (rowCount() > 0)
        emit dataChanged(index(0, Tick), index(rowCount() - 1, Tick), { Qt::CheckStateRole });
    emit ticksChanged();
}

int FundEntryModel::tickedRows() const
{
    return static_cast<int>(std::count_if(m_shown.begin(), m_shown.end(),
        [this](qsizetype place) { return m_ticked.contains(m_entries.at(place).id); }));
}

bool FundEntryModel::isShown(const Transaction& entry) const
{
    if (entry.direction != m_view.direction)
        return false;
    return isTicked(entry)
        || ((!m_view.ownerFlowsOnly || OwnerFlows::isTransferOrRefund(entry.category))
            && (!m_view.uncoveredOnly || !isCovered(entry)));
}

void FundEntryModel::rebuild()
{
    beginResetModel();
    m_shown.clear();
    for (qsizetype i = 0; i < m_entries.size(); ++i) {
        if (isShown(m_entries.at(i)))
            m_shown += i;
    }
    endResetModel();
    emit ticksChanged();
}

int FundEntryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int FundEntryModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant FundEntryModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Transaction& entry = entryAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return text(entry, index.column());
    case Qt::CheckStateRole:
        if (index.column() != Tick)
            return {};
        return isTicked(entry) ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleTextRole:
        if (index.column() == Tick)
            return isTicked(entry) ? u"已勾选"_s : u"未勾选"_s;
        return text(entry, index.column());
    case Qt::TextAlignmentRole:
        return static_cast<int>(
            Qt::AlignVCenter | (index.column() == Amount ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ForegroundRole:
        return color(entry, index.column());
    default:
        return {};
    }
}

QString FundEntryModel::text(const Transaction& entry, int column) const
{
    switch (column) {
    case Date:
        return TextRules::dateText(entry.transDate);
    case Summary:
        return (isCovered(entry) ? u"（已有决定书）"_s : QString()) + entry.summary;
    case Counterparty:
        return entry.counterpartyName;
    case Amount:
        return Money::format(entry.amountFen);
    default:
        return {};
    }
}

QVariant FundEntryModel::color(const Transaction& entry, int column) const
{
    const Theme& theme = Theme::instance();
    if (column == Amount)
        return QBrush(theme.color(amountInk(entry.direction)));
    if (column == Summary && isCovered(entry))
        return QBrush(theme.color(Token::SuccessText));
    return {};
}

QVariant FundEntryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return ColumnHeads::data(headers, section, orientation, role, Amount);
}

Qt::ItemFlags FundEntryModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == Tick ? flags | Qt::ItemIsUserCheckable : flags;
}

bool FundEntryModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid() || index.column() != Tick)
        return false;
    const qint64 id = entryAt(index.row()).id;
    if (value.toInt() == Qt::Checked)
        m_ticked.insert(id);
    else
        m_ticked.remove(id);
    emit dataChanged(index, index, { Qt::CheckStateRole });
    emit ticksChanged();
    return true;
}
