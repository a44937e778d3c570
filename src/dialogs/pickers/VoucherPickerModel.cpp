#include "dialogs/pickers/VoucherPickerModel.h"

#include "core/TextRules.h"
#include "services/vouchers/VoucherAssets.h"
#include "widgets/ThumbnailDelegate.h"

using namespace Qt::StringLiterals;

VoucherPickerModel::VoucherPickerModel(const QList<Voucher>& vouchers, QObject* parent)
    : PickerModel(parent)
    , m_vouchers(vouchers)
{
    setRecordCount(m_vouchers.size());
}

QStringList VoucherPickerModel::headers() const
{
    static const QStringList texts { u"勾选"_s, u"缩略图"_s, u"名称"_s, u"类型"_s, u"凭证日期"_s };
    return texts;
}

QVariant VoucherPickerModel::sortValue(qsizetype record, int column) const
{
    const Voucher& voucher = m_vouchers.at(record);
    switch (column) {
    case Thumbnail:
        return voucher.fileExt;
    case Type:
        return static_cast<qint64>(voucher.voucherType);
    case Date:
        return voucher.voucherDate.toJulianDay();
    default:
        return voucher.name;
    }
}

bool VoucherPickerModel::matches(qsizetype record, const QString& keyword) const
{
    const Voucher& voucher = m_vouchers.at(record);
    const auto holds = [&](const QString& text) { return TextRules::holds(text, keyword); };
    return holds(voucher.name) || holds(voucher.originalFileName) || holds(voucher.note)
        || holds(labelOf(voucher.voucherType)) || holds(TextRules::dateText(voucher.voucherDate));
}

QVariant VoucherPickerModel::cell(qsizetype record, int column, int role) const
{
    const Voucher& voucher = m_vouchers.at(record);
    if (column == Thumbnail) {
        if (role == ThumbnailDelegate::FilePathRole)
            return pathOf(record);
        return role == Qt::AccessibleTextRole ? u"%1 文件"_s.arg(voucher.fileExt.toUpper())
                                              : QVariant();
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (column) {
    case Name:
        return voucher.name;
    case Type:
        return labelOf(voucher.voucherType);
    case Date:
        return TextRules::dateText(voucher.voucherDate);
    default:
        return {};
    }
}

QString VoucherPickerModel::pathOf(qsizetype record) const
{
    const auto found = m_paths.constFind(record);
    if (found != m_paths.cend())
        return *found;
    return *m_paths.insert(record, VoucherAssets::existingFile(m_vouchers.at(record).storedPath));
}
