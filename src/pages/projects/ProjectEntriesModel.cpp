#include "pages/projects/ProjectEntriesModel.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "theme/Theme.h"
#include "widgets/AmountInk.h"
#include "widgets/ColumnHeads.h"
#include "widgets/LinkCellDelegate.h"
#include "widgets/RiskCellDelegate.h"

#include <QBrush>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr auto headers = std::to_array<QStringView>(
    { u"日期", u"摘要", u"方向", u"金额(元)", u"分类", u"风险", u"操作" });
static_assert(headers.size() == ProjectEntriesModel::ColumnCount);

} // namespace

void ProjectEntriesModel::setEntries(const QList<Transaction>& entries)
{
    beginResetModel();
    m_entries = entries;
    endResetModel();
}

int ProjectEntriesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int ProjectEntriesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ProjectEntriesModel::data(const QModelIndex& index, int role) const
{
    const Transaction& entry = m_entries.at(index.row());
    if (role == Qt::UserRole)
        return entry.id;
    if (index.column() == Actions)
        return LinkCellDelegate::cellData({ u"编辑"_s }, role);
    const bool isAmount = index.column() == Amount;
    switch (role) {
    case Qt::DisplayRole:
        return text(entry, index.column());
    case Qt::TextAlignmentRole:
        return isAmount ? ColumnHeads::numberAlignment() : QVariant();
    case Qt::ForegroundRole:
        return isAmount ? QBrush(Theme::instance().color(amountInk(entry.direction))) : QVariant();
    case RiskCellDelegate::LevelRole:
        return static_cast<int>(entry.riskLevel);
    case RiskCellDelegate::OverriddenRole:
        return entry.riskManualOverride.has_value();
    default:
        return {};
    }
}

QVariant ProjectEntriesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return ColumnHeads::data(headers, section, orientation, role, Amount);
}

QString ProjectEntriesModel::text(const Transaction& entry, int column)
{
    switch (column) {
    case Date:
        return TextRules::dateText(entry.transDate);
    case Summary:
        return entry.summary;
    case DirectionColumn:
        return labelOf(entry.direction);
    case Amount:
        return Money::format(entry.amountFen);
    case CategoryColumn:
        return labelOf(entry.category);
    case Risk:
        return labelOf(entry.riskLevel);
    default:
        return {};
    }
}
