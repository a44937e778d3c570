#include "services/figures/LedgerTexts.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "services/figures/LedgerStatistics.h"

using namespace Qt::StringLiterals;

namespace LedgerTexts {

QString ownerLabel(AccountType account)
{
    return account == AccountType::Private ? u"股东私户"_s : counterpartyLabel(account);
}

QString counterpartyLabel(AccountType account)
{
    switch (account) {
    case AccountType::Company:
        return u"对公"_s;
    case AccountType::Private:
        return u"私人"_s;
    case AccountType::Unknown:
        break;
    }
    return u"不明"_s;
}

QString riskToolTip(const Transaction& entry)
{
    QStringList lines = entry.riskReasons;
    if (entry.riskManualOverride) {
        lines += u"人工复核等级：%1"_s.arg(labelOf(*entry.riskManualOverride));
        if (!TextRules::isBlank(entry.riskManualNote))
            lines += u"复核说明：%1"_s.arg(entry.riskManualNote);
    }
    return lines.join(u'\n');
}

QString totalsLine(const QList<Transaction>& entries)
{
    const LedgerStatistics::Totals totals = LedgerStatistics::totalsOf(entries);
    return u"共 %1 笔    收入合计 %2 元    支出合计 %3 元"_s.arg(QString::number(totals.count),
        Money::format(totals.incomeFen), Money::format(totals.expenseFen));
}

QString deleteQuestion(const Transaction& entry)
{
    return u"确认删除流水「%1 %2」？删除后不可恢复，已关联文书内容不受影响但该笔将不再受文书覆盖。"_s
        .arg(TextRules::dateText(entry.transDate), entry.summary);
}

QString rangeText(const DateRange& range)
{
    const auto dayText
        = [](QDate day) { return day.isValid() ? TextRules::dateText(day) : u"不限"_s; };
    return u"%1 至 %2"_s.arg(dayText(range.from), dayText(range.to));
}

} // namespace LedgerTexts
