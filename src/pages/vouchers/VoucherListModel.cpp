#include "pages/vouchers/VoucherListModel.h"

#include "core/ChineseOrder.h"
#include "core/TextRules.h"
#include "services/FileRules.h"
#include "services/vouchers/VoucherAssets.h"
#include "theme/Theme.h"
#include "widgets/ColumnHeads.h"
#include "widgets/LinkCellDelegate.h"
#include "widgets/ThumbnailDelegate.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr auto headers = std::to_array<QStringView>(
    { u"预览", u"名称", u"类型", u"凭证日期", u"关联对象", u"大小", u"添加时间", u"操作" });
static_assert(headers.size() == VoucherListModel::ColumnCount);

// Missing links are what the page is opened for; failures must not look like them.
QVariant linkColour(const VoucherCardData& data)
{
    if (!data.linksKnown)
        return Theme::instance().color(Token::DangerText);
    return data.isUnlinked() ? QVariant(Theme::instance().color(Token::WarningText)) : QVariant();
}

} // namespace

QStringList VoucherListModel::actionTexts()
{
    static const QStringList texts { u"预览"_s, u"文件夹"_s, u"编辑"_s, u"删除"_s };
    return texts;
}

void VoucherListModel::setVouchers(const QList<VoucherCardData>& vouchers)
{
    beginResetModel();
    m_vouchers = vouchers;
    m_paths.clear();
    m_names.clear();
    m_links.clear();
    endResetModel();
}

int VoucherListModel::rowOf(qint64 voucherId) const
{
    const auto found = std::find_if(m_vouchers.cbegin(), m_vouchers.cend(),
        [voucherId](const VoucherCardData& data) { return data.voucher.id == voucherId; });
    return found != m_vouchers.cend() ? static_cast<int>(found - m_vouchers.cbegin()) : -1;
}

int VoucherListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_vouchers.size());
}

int VoucherListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant VoucherListModel::data(const QModelIndex& index, int role) const
{
    const VoucherCardData& data = at(index.row());
    const int column = index.column();
    if (role == IdRole)
        return data.voucher.id;
    if (column == Actions)
        return LinkCellDelegate::cellData(actionTexts(), role);
    if (column == Picture)
        return pictureData(index.row(), role);
    switch (role) {
    case Qt::DisplayRole:
        return text(data, column);
    case Qt::ForegroundRole:
        return column == Links ? linkColour(data) : QVariant();
    case Qt::TextAlignmentRole:
        return column == Size ? ColumnHeads::numberAlignment() : QVariant();
    default:
        return {};
    }
}

QVariant VoucherListModel::pictureData(int row, int role) const
{
    switch (role) {
    case ThumbnailDelegate::FilePathRole:
        return pathAt(row);
    case Qt::ToolTipRole:
        return pathAt(row).isEmpty() ? u"文件缺失"_s : u"点击或按空格键快速预览"_s;
    case Qt::AccessibleTextRole:
        return pathAt(row).isEmpty() ? u"文件缺失"_s
                                     : u"%1 文件"_s.arg(at(row).voucher.fileExt.toUpper());
    default:
        return {};
    }
}

QVariant VoucherListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return ColumnHeads::data(headers, section, orientation, role, Size);
}

QString VoucherListModel::text(const VoucherCardData& data, int column) const
{
    const Voucher& voucher = data.voucher;
    switch (column) {
    case Name:
        return voucher.name;
    case Type:
        return labelOf(voucher.voucherType);
    case Date:
        return TextRules::dateText(voucher.voucherDate);
    case Links:
        return VoucherLinkSummaries::text(data);
    case Size:
        return FileRules::formatFileSize(voucher.fileSize);
    case CreatedAt:
        return voucher.createdAt;
    default:
        return {};
    }
}

const QString& VoucherListModel::pathAt(int row) const
{
    const auto found = m_paths.constFind(row);
    if (found != m_paths.cend())
        return *found;
    return *m_paths.insert(row, VoucherAssets::existingFile(at(row).voucher.storedPath));
}

bool VoucherListModel::isLess(int left, int right, int column) const
{
    const Voucher& a = at(left).voucher;
    const Voucher& b = at(right).voucher;
    switch (column) {
    case Picture:
        return a.fileExt < b.fileExt;
    case Type:
        return a.voucherType < b.voucherType;
    case Date:
        return a.voucherDate < b.voucherDate;
    case Size:
        return a.fileSize < b.fileSize;
    case CreatedAt:
        return a.createdAt < b.createdAt;
    case Name:
    case Links:
        return sortKey(left, column) < sortKey(right, column);
    default:
        return false;
    }
}

const QCollatorSortKey& VoucherListModel::sortKey(int row, int column) const
{
    std::vector<QCollatorSortKey>& keys = column == Name ? m_names : m_links;
    if (keys.empty()) {
        const QCollator collator = chineseCollator();
        keys.reserve(static_cast<std::size_t>(m_vouchers.size()));
        for (const VoucherCardData& data : m_vouchers)
            keys.push_back(collator.sortKey(text(data, column)));
    }
    return keys.at(static_cast<std::size_t>(row));
}
