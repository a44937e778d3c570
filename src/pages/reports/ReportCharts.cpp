#include "pages/reports/ReportCharts.h"

#include "core/Money.h"
#include "services/figures/LedgerStatistics.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ReportCharts {

namespace {

// Both in the order of their enumerations.
constexpr auto categoryColours = std::to_array<Token>({ Token::ChartBusinessIncome,
    Token::ChartBusinessExpense, Token::ChartSalary, Token::ChartExpenseReimburse,
    Token::ChartShareholderIn, Token::ChartShareholderOut, Token::ChartTaxFee, Token::ChartOther });
static_assert(categoryColours.size() == codeTable<Category>.size());

struct PartLook {
    Token colour;
    Qt::BrushStyle pattern;
};
constexpr auto riskLooks = std::to_array<PartLook>({
    { Token::ChartRiskHigh, Qt::SolidPattern },
    { Token::ChartRiskMedium, Qt::BDiagPattern },
    { Token::ChartRiskLow, Qt::VerPattern },
    { Token::ChartRiskNormal, Qt::SolidPattern },
});
static_assert(riskLooks.size() == codeTable<RiskLevel>.size());

} // namespace

QList<HBarChart::Item> categoryBars(const QList<CategoryStat>& categories)
{
    QList<HBarChart::Item> bars;
    for (const CategoryStat& stat : categories) {
        const qint64 movedFen = SaturatingSum::sum(stat.incomeFen, stat.expenseFen);
        bars += { .label = labelOf(stat.category),
            .value = movedFen,
            .valueText = Money::format(movedFen),
            .figures = { u"收入 %1 元"_s.arg(Money::format(stat.incomeFen)),
                u"支出 %1 元"_s.arg(Money::format(stat.expenseFen)), u"%1 笔"_s.arg(stat.count) },
            .colour = categoryColours[static_cast<std::size_t>(stat.category)] };
    }
    return bars;
}

QList<ShareBar::Item> riskParts(const RiskLevelCounts& levels)
{
    QList<ShareBar::Item> parts;
    const auto shares = LedgerStatistics::riskSharesOf(levels);
    for (const LedgerStatistics::RiskShare& share : shares) {
        const PartLook& look = riskLooks[static_cast<std::size_t>(share.level)];
        parts += { .label = labelOf(share.level),
            .value = share.count,
            .valueText = u"%1 笔，占 %2"_s.arg(
                QString::number(share.count), LedgerStatistics::shareText(share.permille)),
            .colour = look.colour,
            .pattern = look.pattern };
    }
    const bool isEmpty = std::all_of(
        shares.begin(), shares.end(), [](const auto& share) { return share.count == 0; });
    return isEmpty ? QList<ShareBar::Item>() : parts;
}

} // namespace ReportCharts
