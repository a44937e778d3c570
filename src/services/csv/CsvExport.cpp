#include "services/csv/CsvExport.h"

#include "core/Money.h"
#include "core/SafeFile.h"
#include "core/TextRules.h"
#include "db/TransactionDao.h"
#include "services/csv/CsvBytes.h"
#include "services/figures/LedgerStatistics.h"

#include <QDir>

#include <array>
#include <cstddef>
#include <vector>

using namespace Qt::StringLiterals;

namespace CsvExport {

namespace {

// In bytes, a little above what most lines take; a wrong guess costs time, nothing else.
constexpr qsizetype usualLineSize = 256;

constexpr auto ledgerHeader = std::to_array<QStringView>(
    { u"ID", u"日期", u"摘要", u"方向", u"金额(元)", u"本方账户", u"对方名称", u"对方账户", u"分类",
        u"关联项目", u"凭证数", u"风险等级", u"风险原因", u"备注" });
constexpr auto categoryHeader
    = std::to_array<QStringView>({ u"分类", u"笔数", u"收入(元)", u"支出(元)", u"净额(元)" });
constexpr auto levelHeader = std::to_array<QStringView>({ u"风险等级", u"笔数", u"占比" });

template <std::size_t size>
void appendHeader(CsvBytes& csv, const std::array<QStringView, size>& titles)
{
    for (const QStringView title : titles)
        csv.field(title);
    csv.endLine();
}

// The labels are written on every line: converted once, in the order of the values.
template <typename Enum> const QByteArray& utf8Label(Enum value)
{
    static const std::vector<QByteArray> labels = [] {
        std::vector<QByteArray> texts;
        for (const Enum each : allValues<Enum>())
            texts.push_back(labelOf(each).toUtf8());
        return texts;
    }();
    const auto index = static_cast<std::size_t>(value);
    return index < labels.size() ? labels[index] : utf8Label(codeFallback<Enum>);
}

QByteArray levelText(const LedgerLine& line)
{
    const QByteArray& label = utf8Label(line.riskLevel);
    return line.riskIsManual ? label + " *" : label;
}

void appendLine(CsvBytes& csv, const LedgerLine& line)
{
    csv.field(line.id)
        .utf8Field(line.date)
        .utf8Field(line.summary)
        .utf8Field(utf8Label(line.direction))
        .field(Money::formatPlain(line.amountFen))
        .utf8Field(utf8Label(line.ownerAccountType))
        .utf8Field(line.counterpartyName)
        .utf8Field(utf8Label(line.counterpartyAccountType))
        .utf8Field(utf8Label(line.category))
        .utf8Field(line.hasProject ? line.projectName : QByteArrayView("—"))
        .field(line.voucherCount)
        .utf8Field(levelText(line))
        .joinedField(line.riskReasons, u"；")
        .utf8Field(line.note)
        .endLine();
}

void appendEntry(CsvBytes& csv, const Transaction& entry)
{
    const QByteArray date = TextRules::dateText(entry.transDate).toUtf8();
    const QByteArray summary = entry.summary.toUtf8();
    const QByteArray counterparty = entry.counterpartyName.toUtf8();
    const QByteArray project = entry.projectName.toUtf8();
    const QByteArray note = entry.note.toUtf8();
    appendLine(csv,
        { .id = entry.id,
            .date = date,
            .summary = summary,
            .direction = entry.direction,
            .amountFen = entry.amountFen,
            .ownerAccountType = entry.ownerAccountType,
            .counterpartyName = counterparty,
            .counterpartyAccountType = entry.counterpartyAccountType,
            .category = entry.category,
            .hasProject = entry.projectId.has_value(),
            .projectName = project,
            .riskLevel = entry.riskLevel,
            .riskIsManual = entry.riskManualOverride.has_value(),
            .riskReasons = entry.riskReasons,
            .note = note,
            .voucherCount = entry.voucherCount });
}

void appendSums(CsvBytes& csv, const QString& title, const LedgerStatistics::Totals& sums)
{
    csv.field(title)
        .field(sums.count)
        .field(Money::formatPlain(sums.incomeFen))
        .field(Money::formatPlain(sums.expenseFen))
        .field(Money::formatPlain(sums.netFen()))
        .endLine();
}

void appendCategories(CsvBytes& csv, const QList<CategoryStat>& categories)
{
    csv.field(u"分类汇总").endLine();
    appendHeader(csv, categoryHeader);
    for (const CategoryStat& category : categories)
        appendSums(csv, labelOf(category.category),
            { category.count, category.incomeFen, category.expenseFen });
    appendSums(csv, u"合计"_s, LedgerStatistics::totalsOf(categories));
}

void appendLevels(CsvBytes& csv, const RiskLevelCounts& levels)
{
    csv.field(u"风险分布").endLine();
    appendHeader(csv, levelHeader);
    for (const LedgerStatistics::RiskShare& share : LedgerStatistics::riskSharesOf(levels))
        csv.field(labelOf(share.level))
            .field(share.count)
            .field(LedgerStatistics::shareText(share.permille))
            .endLine();
}

QString rangeText(const Range& range)
{
    const auto dayText
        = [](QDate day) { return day.isValid() ? TextRules::dateText(day) : u"不限"_s; };
    if (!range.from.isValid() && !range.to.isValid())
        return u"不限"_s;
    return u"%1 至 %2"_s.arg(dayText(range.from), dayText(range.to));
}

Result write(const CsvBytes& csv, const QString& path, qsizetype entries = 0)
{
    QString reason;
    if (SafeFile::write(path, csv.bytes(), &reason))
        return { .ok = true, .entries = entries };
    qWarning("CSV export to %s failed: %s", qUtf8Printable(path), qUtf8Printable(reason));
    return { .message = u"文件无法写入（磁盘空间不足、没有权限或被其他程序占用）：%1"_s.arg(
                 QDir::toNativeSeparators(path)) };
}

QString fileName(const QString& subject, QDate from, QDate to, const QString& time)
{
    const auto dayText = [](QDate day, const QString& whenOpen) {
        return day.isValid() ? day.toString(u"yyyyMMdd") : whenOpen;
    };
    return u"%1_%2_%3_%4.csv"_s.arg(subject, dayText(from, u"起"_s), dayText(to, u"止"_s), time);
}

} // namespace

Result exportLedger(const QList<Transaction>& entries, const QString& path)
{
    CsvBytes csv((entries.size() + 1) * usualLineSize);
    appendHeader(csv, ledgerHeader);
    for (const Transaction& entry : entries)
        appendEntry(csv, entry);
    return write(csv, path, entries.size());
}

Result exportSearch(const TransactionFilter& filter, const QString& path)
{
    CsvBytes csv;
    appendHeader(csv, ledgerHeader);
    TransactionDao ledger;
    qsizetype entries = 0;
    const bool complete = ledger.visitLines(filter, [&](const LedgerLine& line) {
        appendLine(csv, line);
        ++entries;
    });
    if (!complete)
        return { .message = u"流水读取失败：%1"_s.arg(ledger.lastError()) };
    return write(csv, path, entries);
}

Result exportReport(const Range& range, const QList<CategoryStat>& categories,
    const RiskLevelCounts& levels, const QString& path)
{
    CsvBytes csv;
    csv.field(u"统计报表（%1）"_s.arg(rangeText(range))).endLine();
    csv.endLine();
    appendCategories(csv, categories);
    csv.endLine();
    appendLevels(csv, levels);
    return write(csv, path);
}

QString ledgerFileName(const TransactionFilter& filter, const QDateTime& now)
{
    return fileName(u"资金流水"_s, filter.dateFrom, filter.dateTo, now.toString(u"yyyyMMddHHmmss"));
}

QString reportFileName(const Range& range, const QDateTime& now)
{
    return fileName(u"统计报表"_s, range.from, range.to, now.toString(u"yyyyMMdd_HHmmss"));
}

} // namespace CsvExport
