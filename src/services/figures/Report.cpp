#include "services/figures/Report.h"

#include "core/Money.h"
#include "db/TransactionDao.h"
#include "services/documents/DocumentTemplates.h"
#include "services/figures/LedgerTexts.h"
#include "services/figures/ReadResult.h"
#include "services/figures/Trend.h"

using namespace Qt::StringLiterals;
using namespace LedgerStatistics;

std::optional<Report> Report::read(const DateRange& range, QDate today)
{
    const auto totals = comparedTotals(range, today);
    const auto months = monthlySeries(range);
    TransactionDao entries;
    const auto categories = entries.categoryStats(range.from, range.to);
    const RiskLevelCounts levels = entries.riskLevelCounts(range.from, range.to);
    if (!totals || !months || !entries.lastError().isEmpty())
        return std::nullopt;
    return Report { range, *totals, categories, levels, *months };
}

namespace ReportTexts {

namespace {

const QStringList sumColumns { u"笔数"_s, u"收入(元)"_s, u"支出(元)"_s, u"净额(元)"_s };

QStringList sumRow(const QString& title, const Totals& totals)
{
    return { title, QString::number(totals.count), Money::format(totals.incomeFen),
        Money::format(totals.expenseFen), Money::format(totals.netFen()) };
}

// The entries whose account is neither; only a damaged file has them.
Totals restOf(const AccountTotals& totals)
{
    using SaturatingSum::difference;
    const auto rest = [&](qint64 Totals::*part) {
        return difference(
            difference(totals.all.*part, totals.company.*part), totals.privateAccount.*part);
    };
    return { rest(&Totals::count), rest(&Totals::incomeFen), rest(&Totals::expenseFen) };
}

QString cell(const QString& tag, const QString& text, bool isFirst)
{
    return u"<%1 align=\"%2\" style=\"border:1px solid #000000; padding:4px; "
           "font-size:9.5pt;\">%3</%1>"_s.arg(
               tag, isFirst ? u"left"_s : u"right"_s, DocumentTemplates::escaped(text));
}

QString tableRow(const QStringList& texts, const QString& tag)
{
    QString html = u"<tr>"_s;
    for (qsizetype i = 0; i < texts.size(); ++i)
        html += cell(tag, texts.at(i), i == 0);
    return html + u"</tr>"_s;
}

QString tableHtml(const FigureTable& table)
{
    QString html = u"<p style=\"font-size:12pt; margin-top:14px;\"><b>"_s
        + DocumentTemplates::escaped(table.title)
        + u"</b></p><table width=\"100%\" cellspacing=\"0\" "
          "style=\"border-collapse:collapse;\">"_s
        + tableRow(table.header, u"th"_s);
    for (qsizetype i = 0; i < table.rows.size(); ++i) {
        const bool isTotal = table.endsWithTotal && i == table.rows.size() - 1;
        html += tableRow(table.rows.at(i), isTotal ? u"th"_s : u"td"_s);
    }
    return html + u"</table>"_s;
}

} // namespace

FigureTable categoryTable(const QList<CategoryStat>& categories)
{
    FigureTable table { u"分类汇总"_s, QStringList { u"分类"_s } + sumColumns, {}, true };
    for (const CategoryStat& stat : categories)
        table.rows
            += sumRow(labelOf(stat.category), { stat.count, stat.incomeFen, stat.expenseFen });
    table.rows += sumRow(u"合计"_s, totalsOf(categories));
    return table;
}

FigureTable accountTable(const AccountTotals& totals)
{
    FigureTable table { u"账户对比"_s, QStringList { u"账户"_s } + sumColumns, {}, true };
    table.rows += sumRow(labelOf(AccountType::Company), totals.company);
    table.rows += sumRow(labelOf(AccountType::Private), totals.privateAccount);
    if (const Totals rest = restOf(totals); rest != Totals())
        table.rows += sumRow(labelOf(AccountType::Unknown), rest);
    table.rows += sumRow(u"合计"_s, totals.all);
    return table;
}

FigureTable riskTable(const RiskLevelCounts& levels)
{
    FigureTable table { u"风险分布"_s, { u"风险等级"_s, u"笔数"_s, u"占比"_s }, {}, false };
    for (const RiskShare& share : riskSharesOf(levels))
        table.rows
            += { labelOf(share.level), QString::number(share.count), shareText(share.permille) };
    return table;
}

FigureTable trendTable(const Report& report)
{
    FigureTable table { u"月度趋势"_s, { u"期间"_s, u"收入(元)"_s, u"支出(元)"_s, u"净额(元)"_s },
        {}, false };
    for (const Trend::Step& step : Trend::stepsOf(report.months, report.range))
        table.rows += { step.title, Money::format(step.inFen), Money::format(step.outFen),
            Money::format(step.netFen()) };
    return table;
}

QString rangeText(const DateRange& range)
{
    return range == DateRange() ? u"不限"_s : LedgerTexts::rangeText(range);
}

QString changeLine(const ComparedTotals& totals, qint64 (*figure)(const Totals&))
{
    if (!totals.comparison)
        return u"时间范围没有起止日期，不作比较"_s;
    const auto& [ranges, current, previous, yearAgo] = *totals.comparison;
    return u"较上期 %1　同比 %2"_s.arg(changeText(figure(current), figure(previous)),
        changeText(figure(current), figure(yearAgo)));
}

QString comparedDays(const Report& report)
{
    if (!report.totals.comparison)
        return {};
    const ComparedRanges& ranges = report.totals.comparison->ranges;
    const QString days = u"比较的日期：本期 %1；上期 %2；同比（去年同期）%3。"_s.arg(
        LedgerTexts::rangeText(ranges.current), LedgerTexts::rangeText(ranges.previous),
        LedgerTexts::rangeText(ranges.yearAgo));
    return ranges.current == report.range ? days : days + u"本期尚未结束，只按已过去的日期比较。"_s;
}

QString html(const Report& report, const QString& companyName)
{
    const auto line = [](const QString& text) {
        return u"<p style=\"font-size:10.5pt;\">"_s + DocumentTemplates::escaped(text) + u"</p>"_s;
    };
    QString page = u"<html><body style=\"font-family:'Microsoft YaHei';\">"
                   "<p align=\"center\" style=\"font-size:16pt;\"><b>统计报表</b></p>"_s
        + line(companyName) + line(u"时间范围：%1"_s.arg(rangeText(report.range)));
    for (const FigureTable& table : { categoryTable(report.categories),
             accountTable(report.totals.totals), riskTable(report.levels), trendTable(report) })
        page += tableHtml(table);
    return page + u"</body></html>"_s;
}

} // namespace ReportTexts
