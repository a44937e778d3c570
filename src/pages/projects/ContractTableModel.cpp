#include "pages/projects/ContractTableModel.h"

#include "services/projects/ProjectTexts.h"
#include "widgets/ColumnHeads.h"
#include "widgets/LinkCellDelegate.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr auto headers = std::to_array<QStringView>({ u"合同编号", u"合同名称", u"我方当事人",
    u"对方当事人", u"金额(元)", u"签订日期", u"状态", u"操作" });
static_assert(headers.size() == ContractTableModel::ColumnCount);

} // namespace

void ContractTableModel::setContent(const Content& content)
{
    beginResetModel();
    m_content = content;
    endResetModel();
}

std::optional<int> ContractTableModel::voucherCount(qint64 contractId) const
{
    if (!m_content.voucherCounts)
        return {};
    return m_content.voucherCounts->value(contractId);
}

int ContractTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_content.contracts.size());
}

int ContractTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ContractTableModel::data(const QModelIndex& index, int role) const
{
    const Contract& contract = at(index.row());
    if (role == Qt::UserRole)
        return contract.id;
    if (index.column() == Actions)
        return LinkCellDelegate::cellData({ u"编辑"_s, u"删除"_s }, role);
    switch (role) {
    case Qt::DisplayRole:
        return text(contract, index.column());
    case Qt::AccessibleTextRole:
        return index.column() == Name ? accessibleName(contract) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == Amount ? ColumnHeads::numberAlignment() : QVariant();
    case VoucherCountRole: {
        const std::optional<int> count = voucherCount(contract.id);
        return count ? QVariant(*count) : QVariant();
    }
    default:
        return {};
    }
}

QVariant ContractTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return ColumnHeads::data(headers, section, orientation, role, Amount);
}

QString ContractTableModel::text(const Contract& contract, int column) const
{
    switch (column) {
    case Code:
        return contract.code;
    case Name:
        return contract.name;
    case OurParty:
        return m_content.ourParty;
    case OtherParty:
        return contract.partyB;
    case Amount:
        return ProjectTexts::amount(contract);
    case SignDate:
        return ProjectTexts::dateText(contract.signDate, contract.signDateText);
    case Status:
        return labelOf(contract.status);
    default:
        return {};
    }
}

QString ContractTableModel::accessibleName(const Contract& contract) const
{
    const std::optional<int> count = voucherCount(contract.id);
    return count ? u"%1，关联凭证 %2 张"_s.arg(contract.name, QString::number(*count))
                 : contract.name;
}
