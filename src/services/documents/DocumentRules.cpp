#include "services/documents/DocumentRules.h"

#include "core/TextRules.h"
#include "services/documents/DocumentTexts.h"
#include "services/ProfileRules.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace DocumentRules {

namespace {

constexpr int firstYear = 2000;

// The form in which a record keeps a selection: a compact JSON array of strings.
QString selectionText(const QStringList& selection)
{
    const QJsonDocument json(QJsonArray::fromStringList(selection));
    return QString::fromUtf8(json.toJson(QJsonDocument::Compact));
}

QString selectionText(const QList<qint64>& ids)
{
    QStringList texts;
    QSet<qint64> seen;
    for (const qint64 id : ids) {
        if (!seen.contains(id))
            texts += QString::number(id);
        seen.insert(id);
    }
    return selectionText(texts);
}

QString nothingSelected(DocType type)
{
    switch (type) {
    case DocType::FundDecision:
        return u"请至少勾选一笔资金流水。"_s;
    case DocType::IndependenceStatement:
        return u"请至少勾选一项独立性措施。"_s;
    case DocType::AnnualDecision:
        break;
    }
    return u"请至少勾选一项决定事项。"_s;
}

} // namespace

QString firstProblem(const AnnualDecisionInput& input, int currentYear)
{
    if (input.year < firstYear || input.year > currentYear)
        return u"决定年份超出有效范围。"_s;
    if (input.items.isEmpty())
        return nothingSelected(DocType::AnnualDecision);
    if (!input.decisionDate.isValid())
        return u"决定日期无效。"_s;
    return {};
}

QString firstProblem(const FundDecisionInput& input)
{
    if (input.transactionIds.isEmpty())
        return nothingSelected(DocType::FundDecision);
    if (TextRules::isBlank(input.fundNature))
        return u"请选择或填写资金性质。"_s;
    if (!input.decisionDate.isValid())
        return u"决定日期无效。"_s;
    return {};
}

QString firstProblem(const IndependenceStatementInput& input)
{
    if (!input.baseDate.isValid())
        return u"声明基准日无效。"_s;
    if (input.measures.isEmpty())
        return nothingSelected(DocType::IndependenceStatement);
    return {};
}

QString firstProblem(const CompanyProfile& profile)
{
    if (!ProfileRules::isComplete(profile))
        return u"公司档案不完整：请先填写公司名称与股东姓名再生成文书。"_s;
    return {};
}

QString firstProblem(const Transaction& entry, Direction direction)
{
    if (entry.direction != direction)
        return u"流水「%1」的收支方向与所选往来类型不一致。"_s.arg(entry.summary);
    if (entry.amountFen <= 0)
        return u"流水「%1」的金额不正确，请先更正流水再出具文书。"_s.arg(entry.summary);
    return {};
}

QString firstProblem(const DocumentRecord& record)
{
    const QList<qint64> ids = coveredIds(record);
    const bool readable = !selectedTexts(record).isEmpty()
        && std::all_of(ids.begin(), ids.end(), [](qint64 id) { return id > 0; });
    return readable ? QString() : u"文书保存的勾选内容无法读取，未作任何改动。"_s;
}

DocumentRecord draft(const AnnualDecisionInput& input)
{
    return { .docType = DocType::AnnualDecision,
        .title = u"%1年度股东决定书"_s.arg(QString::number(input.year)),
        .docYear = input.year,
        .docDate = input.decisionDate,
        .selectedItems = selectionText(input.items) };
}

DocumentRecord draft(const FundDecisionInput& input)
{
    const QString nature = TextRules::asStored(input.fundNature);
    return { .docType = DocType::FundDecision,
        .title = u"公私资金往来决定书（%1）"_s.arg(nature),
        .docYear = input.decisionDate.year(),
        .docDate = input.decisionDate,
        .fundDirection = input.direction,
        .fundNature = nature,
        .settleDate = input.settleDate,
        .extraText = TextRules::asStored(input.extraText),
        .selectedItems = selectionText(input.transactionIds) };
}

DocumentRecord draft(const IndependenceStatementInput& input)
{
    return { .docType = DocType::IndependenceStatement,
        .title = DocumentTexts::kindName(DocType::IndependenceStatement),
        .docDate = input.baseDate,
        .extraText = TextRules::asStored(input.furtherMeasures),
        .selectedItems = selectionText(input.measures) };
}

int numberingYear(const DocumentRecord& record)
{
    return record.docYear > 0 ? record.docYear : record.docDate.year();
}

QStringList selectedTexts(const DocumentRecord& record)
{
    QStringList texts;
    for (const auto& text : QJsonDocument::fromJson(record.selectedItems.toUtf8()).array())
        texts += text.toString();
    return texts;
}

QList<qint64> coveredIds(const DocumentRecord& record)
{
    QList<qint64> ids;
    if (record.docType != DocType::FundDecision)
        return ids;
    for (const QString& text : selectedTexts(record))
        ids += text.toLongLong();
    return ids;
}

std::optional<qint64> totalFen(const QList<Transaction>& entries)
{
    qint64 total = 0;
    for (const Transaction& entry : entries) {
        // The ledger holds positive amounts only; a damaged row must not lessen the sum.
        if (entry.amountFen < 0 || entry.amountFen > std::numeric_limits<qint64>::max() - total)
            return {};
        total += entry.amountFen;
    }
    return total;
}

} // namespace DocumentRules
