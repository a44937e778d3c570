#include "dialogs/pickers/TxPickerModel.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "theme/Theme.h"
#include "widgets/AmountInk.h"
#include "widgets/RiskCellDelegate.h"

using namespace Qt::StringLiterals;

TxPickerModel::TxPickerModel(const QList<Transaction>& entries, QObject* parent)
    : PickerModel(parent)
    , m_entries(entries)
{
    setRecordCount(m_entries.size());
}

QStringList TxPickerModel::headers() const
{
    static const QStringList texts { u"勾选"_s, u"日期"_s, u"摘要"_s, u"对方名称"_s, u"金额(元)"_s,
        u"分类"_s, u"风险"_s };
    return texts;
}

QVariant TxPickerModel::sortValue(qsizetype record, int column) const
{
    const Transaction& entry = m_entries.at(record);
    switch (column) {
    case Date:
        return entry.transDate.toJulianDay();
    case Amount:
        return entry.amountFen;
    case CategoryName:
        return static_cast<qint64>(entry.category);
    case Risk: // the gravest last, so that the second click brings it up
        return -static_cast<qint64>(entry.riskLevel);
    default:
        return textOf(entry, column);
    }
}

bool TxPickerModel::matches(qsizetype record, const QString& keyword) const
{
    const Transaction& entry = m_entries.at(record);
    return TextRules::holds(entry.summary, keyword)
        || TextRules::holds(entry.counterpartyName, keyword)
        || TextRules::dateText(entry.transDate).contains(keyword)
        || Money::format(entry.amountFen).contains(keyword)
        || Money::formatPlain(entry.amountFen).contains(keyword);
}

QVariant TxPickerModel::cell(qsizetype record, int column, int role) const
{
    const Transaction& entry = m_entries.at(record);
    switch (role) {
    case Qt::DisplayRole:
        return textOf(entry, column);
    case Qt::AccessibleTextRole:
        return column == Amount ? u"%1 %2"_s.arg(labelOf(entry.direction), textOf(entry, column))
                                : textOf(entry, column);
    case Qt::ToolTipRole:
        return column == Amount ? labelOf(entry.direction) : QVariant();
    case Qt::ForegroundRole:
        return column == Amount ? QBrush(Theme::instance().color(amountInk(entry.direction)))
                                : QVariant();
    case RiskCellDelegate::LevelRole:
        return static_cast<int>(entry.riskLevel);
    case RiskCellDelegate::OverriddenRole:
        return entry.riskManualOverride.has_value();
    default:
        return {};
    }
}

Qt::Alignment TxPickerModel::alignment(int column) const
{
    return column == Amount ? Qt::AlignRight | Qt::AlignVCenter : PickerModel::alignment(column);
}

QString TxPickerModel::textOf(const Transaction& entry, int column)
{
    switch (column) {
    case Date:
        return TextRules::dateText(entry.transDate);
    case Summary:
        return entry.summary;
    case Counterparty:
        return entry.counterpartyName;
    case Amount:
        return Money::format(entry.amountFen);
    case CategoryName:
        return labelOf(entry.category);
    case Risk:
        return entry.riskLevel == RiskLevel::Normal ? QString() : labelOf(entry.riskLevel);
    default:
        return {};
    }
}
