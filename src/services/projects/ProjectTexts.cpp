#include "services/projects/ProjectTexts.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "services/figures/SaturatingSum.h"

using namespace Qt::StringLiterals;

namespace ProjectTexts {

QString dateText(QDate date, const QString& stored)
{
    if (date.isValid())
        return TextRules::dateText(date);
    return TextRules::isBlank(stored) ? u"未设置"_s : u"%1（日期有误）"_s.arg(stored);
}

QString headline(const Project& project)
{
    const QString budget
        = project.budgetFen ? Money::format(*project.budgetFen) + u" 元"_s : u"未设置"_s;
    return u"%1 · %2 · 预算 %3"_s.arg(project.code, labelOf(project.status), budget);
}

QString period(const Project& project)
{
    return u"%1 至 %2"_s.arg(dateText(project.startDate, project.startDateText),
        dateText(project.endDate, project.endDateText));
}

QString amount(const Contract& contract)
{
    return contract.amountFen == 0 ? u"未约定"_s : Money::format(contract.amountFen);
}

QString totals(const ProjectTotals& totals)
{
    return u"共 %1 笔 · 收入合计 %2 元 / 支出合计 %3 元 / 净额 %4 元"_s.arg(
        QString::number(totals.count), Money::format(totals.incomeFen),
        Money::format(totals.expenseFen),
        Money::format(SaturatingSum::difference(totals.incomeFen, totals.expenseFen)));
}

} // namespace ProjectTexts
