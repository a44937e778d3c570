#include "pages/ledger/LedgerModel.h"

#include "core/ChineseOrder.h"
#include "core/Money.h"
#include "core/TextRules.h"
#include "services/figures/LedgerTexts.h"
#include "theme/Theme.h"
#include "widgets/AmountInk.h"
#include "widgets/RiskCellDelegate.h"

#include <algorithm>
#include <numeric>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr auto headers = std::to_array<QStringView>({ u"日期", u"摘要", u"方向", u"金额(元)",
    u"本方账户", u"对方名称", u"对方账户", u"分类", u"关联项目", u"凭证", u"风险", u"操作" });
static_assert(headers.size() == LedgerModel::ColumnCount);

const QString& textOf(const Transaction& entry, int column)
{
    switch (column) {
    case LedgerModel::Counterparty:
        return entry.counterpartyName;
    case LedgerModel::Project:
        return entry.projectName;
    default:
        return entry.summary;
    }
}

// Ledgers repeat names and summaries a lot, and comparing by a locale is slow: every different
// text is collated once, and the rows are compared by the places that came out.
QHash<QString, qint64> placesOf(const QList<QString>& texts)
{
    const QCollator collator = chineseCollator();
    std::vector<QCollatorSortKey> keys;
    keys.reserve(static_cast<std::size_t>(texts.size()));
    for (const QString& text : texts)
        keys.push_back(collator.sortKey(text));
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(),
        [&keys](std::size_t a, std::size_t b) { return keys[a].compare(keys[b]) < 0; });
    QHash<QString, qint64> places;
    places.reserve(texts.size());
    qint64 place = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && keys[order[i - 1]].compare(keys[order[i]]) < 0)
            ++place;
        places.insert(texts.at(static_cast<qsizetype>(order[i])), place);
    }
    return places;
}

QVariant alignmentOf(int column)
{
    switch (column) {
    case LedgerModel::Amount:
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    case LedgerModel::Actions:
        return QVariant::fromValue(Qt::AlignCenter);
    default:
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

QVariant inkOf(const Transaction& entry, int column)
{
    if (column != LedgerModel::Amount && column != LedgerModel::DirectionText)
        return {};
    return Theme::instance().color(amountInk(entry.direction));
}

QVariant toolTipOf(const Transaction& entry, int column)
{
    switch (column) {
    case LedgerModel::Risk:
        return LedgerTexts::riskToolTip(entry);
    case LedgerModel::Vouchers:
        return u"查看该笔流水的凭证"_s;
    default:
        return {};
    }
}

QVariant spokenOf(const Transaction& entry, int column)
{
    switch (column) {
    case LedgerModel::Risk:
        return entry.riskManualOverride ? labelOf(entry.riskLevel) + u" *"_s
                                        : labelOf(entry.riskLevel);
    case LedgerModel::Actions:
        return u"编辑 生成决定书 删除"_s;
    default:
        return {};
    }
}

} // namespace

void LedgerModel::setEntries(const QList<Transaction>& entries)
{
    beginResetModel();
    m_entries = entries;
    m_rows.clear();
    m_ranks.clear();
    endResetModel();
}

int LedgerModel::rowOf(qint64 id) const
{
    if (m_rows.isEmpty()) {
        m_rows.reserve(m_entries.size());
        for (int row = 0; row < rowCount(); ++row)
            m_rows.insert(m_entries.at(row).id, row);
    }
    return m_rows.value(id, -1);
}

qint64 LedgerModel::sortValue(int row, int column) const
{
    const Transaction& entry = m_entries.at(row);
    switch (column) {
    case Date:
        return entry.transDate.isValid() ? entry.transDate.toJulianDay() : 0;
    case DirectionText:
        return static_cast<qint64>(entry.direction);
    case Amount:
        return entry.amountFen;
    case OwnerAccount:
        return static_cast<qint64>(entry.ownerAccountType);
    case CounterpartyAccount:
        return static_cast<qint64>(entry.counterpartyAccountType);
    case CategoryText:
        return static_cast<qint64>(entry.category);
    case Vouchers:
        return entry.voucherCount;
    case Risk:
        return static_cast<qint64>(entry.riskLevel);
    case Summary:
    case Counterparty:
    case Project:
        return textRanks(column).at(row);
    default:
        return 0;
    }
}

const QList<qint64>& LedgerModel::textRanks(int column) const
{
    QList<qint64>& ranks = m_ranks[column];
    if (!ranks.isEmpty())
        return ranks;
    QHash<QString, qint64> places;
    for (const Transaction& entry : m_entries)
        places.insert(textOf(entry, column), 0);
    places = placesOf(places.keys());
    ranks.reserve(m_entries.size());
    for (const Transaction& entry : m_entries)
        ranks += places.value(textOf(entry, column));
    return ranks;
}

int LedgerModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int LedgerModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LedgerModel::data(const QModelIndex& index, int role) const
{
    // Qt's own views ask for cells that are not there.
    if (!index.isValid())
        return {};
    const Transaction& entry = m_entries.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return displayed(entry, index.column());
    case Qt::TextAlignmentRole:
        return alignmentOf(index.column());
    case Qt::ForegroundRole:
        return inkOf(entry, index.column());
    case Qt::ToolTipRole:
        return toolTipOf(entry, index.column());
    case Qt::AccessibleTextRole:
        return spokenOf(entry, index.column());
    case IdRole:
        return entry.id;
    case DirectionRole:
        return static_cast<int>(entry.direction);
    case RiskCellDelegate::LevelRole: // in force
        return static_cast<int>(entry.riskLevel);
    case RiskCellDelegate::OverriddenRole:
        return entry.riskManualOverride.has_value();
    case SortRole:
        return sortValue(index.row(), index.column());
    default:
        return {};
    }
}

QVariant LedgerModel::displayed(const Transaction& entry, int column) const
{
    switch (column) {
    case Date:
        return TextRules::dateText(entry.transDate);
    case DirectionText:
        return labelOf(entry.direction);
    case Amount:
        return Money::format(entry.amountFen);
    case OwnerAccount:
        return LedgerTexts::ownerLabel(entry.ownerAccountType);
    case CounterpartyAccount:
        return LedgerTexts::counterpartyLabel(entry.counterpartyAccountType);
    case CategoryText:
        return labelOf(entry.category);
    case Vouchers:
        return entry.voucherCount;
    case Risk:
        return labelOf(entry.riskLevel);
    case Actions:
        return {};
    default:
        return textOf(entry, column);
    }
}

QVariant LedgerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::DisplayRole)
        return headers.at(static_cast<std::size_t>(section)).toString();
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(section);
    return {};
}
