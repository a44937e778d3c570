#include "services/documents/AnnualItems.h"

#include "core/TextRules.h"
#include "services/documents/DocumentTexts.h"

using namespace Qt::StringLiterals;

namespace AnnualItems {

QStringList sentences(const AnnualChoices& choices)
{
    QStringList items;
    const QStringList reports = DocumentTexts::annualReportItems(choices.year);
    if (choices.operatingReport)
        items += reports.at(0);
    if (choices.financialReport)
        items += reports.at(1);
    if (choices.profit == ProfitPlan::Kept)
        items += DocumentTexts::profitKept();
    if (choices.profit == ProfitPlan::Distributed && firstProblem(choices).isEmpty())
        items += DocumentTexts::profitDistributed(
            choices.profitFen, TextRules::asStored(choices.method));
    for (const QString& other : choices.others) {
        if (!TextRules::isBlank(other))
            items += DocumentTexts::otherItem(TextRules::asStored(other));
    }
    return items;
}

QString firstProblem(const AnnualChoices& choices)
{
    if (choices.profit != ProfitPlan::Distributed)
        return {};
    if (choices.profitFen <= 0)
        return u"请填写分配利润的金额。"_s;
    if (TextRules::isBlank(choices.method))
        return u"请选择或填写利润分配方式。"_s;
    return {};
}

} // namespace AnnualItems
