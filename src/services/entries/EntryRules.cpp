#include "services/entries/EntryRules.h"

#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace EntryRules {

namespace {

qsizetype lengthOf(const QString& text)
{
    return TextRules::characterCount(TextRules::asStored(text));
}

} // namespace

std::optional<FormProblem<Field>> firstProblem(const Transaction& entry)
{
    const auto problem = [](Field field, const QString& text) {
        return FormProblem<Field> { field, u"请检查填写内容"_s, text };
    };
    if (!entry.transDate.isValid())
        return problem(Field::Date, u"请选择交易日期"_s);
    if (entry.amountFen <= 0 || entry.amountFen > largestAmountFen)
        return problem(Field::Amount, u"金额必须大于 0 且不超过 99,999,999.99 元"_s);
    const qsizetype summary = lengthOf(entry.summary);
    if (summary < shortestSummary || summary > longestSummary)
        return problem(Field::Summary, u"摘要需 2–64 个字"_s);
    if (TextRules::isBlank(entry.counterpartyName))
        return problem(Field::Counterparty, u"请填写对方名称"_s);
    if (lengthOf(entry.counterpartyName) > longestCounterparty)
        return problem(Field::Counterparty, u"对方名称最多 64 个字"_s);
    if (lengthOf(entry.note) > longestNote)
        return problem(Field::Note, u"备注最多 500 个字"_s);
    return {};
}

Transaction normalized(Transaction entry)
{
    entry.summary = TextRules::oneLine(entry.summary);
    entry.counterpartyName = TextRules::oneLine(entry.counterpartyName);
    entry.note = TextRules::asStored(entry.note);
    return entry;
}

Transaction copyOf(const Transaction& pattern, QDate today)
{
    Transaction entry;
    entry.transDate = today;
    entry.summary = pattern.summary;
    entry.direction = pattern.direction;
    entry.amountFen = pattern.amountFen;
    entry.ownerAccountType = pattern.ownerAccountType;
    entry.counterpartyName = pattern.counterpartyName;
    entry.counterpartyAccountType = pattern.counterpartyAccountType;
    entry.category = pattern.category;
    entry.projectId = pattern.projectId;
    entry.note = pattern.note;
    return entry;
}

QString reviewProblem(const QString& note)
{
    const qsizetype length = lengthOf(note);
    if (length == 0)
        return u"请填写复核说明"_s;
    if (length < shortestReview || length > longestReview)
        return u"复核说明需 2–500 个字"_s;
    return {};
}

bool isOffered(const Project& project)
{
    return project.status == ProjectStatus::Planning || project.status == ProjectStatus::Ongoing;
}

QString projectText(const Project& project)
{
    return isOffered(project) ? u"%1 %2"_s.arg(project.code, project.name)
                              : u"%1 %2（历史项目）"_s.arg(project.code, project.name);
}

} // namespace EntryRules
