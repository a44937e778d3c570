#include "services/figures/TodoList.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "services/figures/SaturatingSum.h"
#include "services/risk/RiskRules.h"

#include <algorithm>
#include <iterator>
#include <tuple>

using namespace Qt::StringLiterals;

namespace TodoList {

namespace {

constexpr int yearEndMonth = 11; // from its first day on there is still time to settle

QVariantList variantsOf(const QList<qint64>& ids)
{
    QVariantList variants;
    for (const qint64 id : ids)
        variants += id;
    return variants;
}

QString yuanText(qint64 fen)
{
    return Money::format(fen) + u" 元"_s;
}

void addHighRiskEntries(QList<Item>& items, const Facts& facts)
{
    if (facts.highRiskCount <= 0)
        return;
    items += { Kind::HighRiskEntries, NoticeLevel::Danger,
        u"%1 笔高风险流水待处理"_s.arg(facts.highRiskCount),
        u"这些流水看起来像公司的钱与个人的钱混在了一起。请逐笔核对原因，补充说明和凭证；"
        "确认没有问题的，请写明理由。"_s,
        Target::Ledger, { { u"risk"_s, codeOf(RiskLevel::High) } } };
}

// A person who marked an entry as normal has looked at it; it is not asked for again.
bool isSettledByHand(const Transaction& flow)
{
    return flow.riskManualOverride == RiskLevel::Normal;
}

QList<Transaction> frequentUncovered(const Facts& facts)
{
    QList<RiskRules::Flow> dates;
    for (const Transaction& flow : facts.ownerFlows)
        dates += { flow.id, flow.transDate };
    const auto groups
        = RiskRules::frequentGroups(dates, facts.coveredIds, RiskRules::frequencyOf(facts.profile));
    QList<Transaction> found;
    std::copy_if(facts.ownerFlows.begin(), facts.ownerFlows.end(), std::back_inserter(found),
        [&](const Transaction& flow) {
            return groups.contains(flow.id) && !isSettledByHand(flow);
        });
    return found;
}

void addUncoveredTransfers(QList<Item>& items, const Facts& facts)
{
    const QList<Transaction> flows = frequentUncovered(facts);
    for (const Direction direction : { Direction::Out, Direction::In }) {
        QList<qint64> ids;
        qint64 sumFen = 0;
        for (const Transaction& flow : flows) {
            if (flow.direction != direction)
                continue;
            ids += flow.id;
            sumFen = SaturatingSum::sum(sumFen, flow.amountFen);
        }
        if (ids.isEmpty())
            continue;
        const QString way = direction == Direction::Out ? u"公司付给股东"_s : u"股东转入公司"_s;
        items += { Kind::UncoveredTransfers, NoticeLevel::Warning,
            u"%1 笔%2的资金缺少往来决定书"_s.arg(QString::number(ids.size()), way),
            u"短期内频繁往来，合计 %1。请生成公私资金往来决定书，写明是借款、备用金还是报销等，"
            "并签名存档。"_s.arg(yuanText(sumFen)),
            Target::FundDecision, { { u"fund"_s, true }, { u"txIds"_s, variantsOf(ids) } } };
    }
}

void addMissingAnnualDecision(QList<Item>& items, const Facts& facts)
{
    if (facts.entriesLastYear <= 0 || facts.hasAnnualDecisionLastYear)
        return;
    const int year = facts.today.year() - 1;
    items += { Kind::MissingAnnualDecision, NoticeLevel::Warning,
        u"缺少 %1 年度股东决定书"_s.arg(year),
        u"%1 年有 %2 笔流水，但还没有当年的年度股东决定书。请生成、签名并存档。"_s.arg(
            QString::number(year), QString::number(facts.entriesLastYear)),
        Target::AnnualDecision, { { u"year"_s, year } } };
}

void addMissingIndependenceStatement(QList<Item>& items, const Facts& facts)
{
    const QDate latest = facts.latestIndependenceStatement;
    if (latest.isValid() && latest >= facts.today.addMonths(-12))
        return;
    const QString text = latest.isValid()
        ? u"上一份的基准日是 %1，已超过十二个月。建议每年出具一份新的财产独立声明书。"_s.arg(
            TextRules::dateText(latest))
        : u"还没有财产独立声明书。建议出具一份，说明公司财产与个人财产分开管理，此后每年更新。"_s;
    items += { Kind::MissingIndependenceStatement, NoticeLevel::Info,
        u"近十二个月没有财产独立声明书"_s, text, Target::IndependenceStatement,
        { { u"kind"_s, codeOf(DocType::IndependenceStatement) } } };
}

// The money left with the first payment that the decision covers, which may lie before the day
// on which the decision was drawn up; what came back from then on may settle it.
QDate outstandingSince(const Decision& decision)
{
    const QDate first = decision.covered.firstDate;
    return first.isValid() ? std::min(first, decision.document.docDate) : decision.document.docDate;
}

// What the owner transferred to the company, oldest first.
QList<Transaction> returnsOf(const QList<Transaction>& ownerFlows)
{
    QList<Transaction> returns;
    std::copy_if(ownerFlows.begin(), ownerFlows.end(), std::back_inserter(returns),
        [](const Transaction& flow) {
            return flow.category == Category::ShareholderIn && flow.direction == Direction::In
                && flow.transDate.isValid();
        });
    std::stable_sort(returns.begin(), returns.end(),
        [](const auto& a, const auto& b) { return a.transDate < b.transDate; });
    return returns;
}

bool isDue(const Decision& decision, QDate today)
{
    const DocumentRecord& document = decision.document;
    return document.fundDirection == Direction::Out && document.docDate.isValid()
        && document.docDate >= today.addMonths(-12) && document.settleDate.isValid()
        && document.settleDate < today;
}

// The overdue decisions, those first whose money left first.
QList<Decision> dueDecisions(const Facts& facts)
{
    QList<Decision> due;
    std::copy_if(facts.fundDecisions.begin(), facts.fundDecisions.end(), std::back_inserter(due),
        [&](const Decision& decision) { return isDue(decision, facts.today); });
    std::sort(due.begin(), due.end(), [](const Decision& a, const Decision& b) {
        return std::tuple(outstandingSince(a), a.document.docDate, a.document.id)
            < std::tuple(outstandingSince(b), b.document.docDate, b.document.id);
    });
    return due;
}

struct OpenDecision {
    Decision decision;
    qint64 returnedFen = 0; // of its sum, by transfers that settle nothing else
};

// Every yuan that came back settles one decision only: the oldest takes the oldest transfers, and
// what is left of a transfer goes to the next. Both lists are sorted, so that a transfer too old
// for one decision is too old for all that follow and one pass is enough.
QList<OpenDecision> openDecisions(const Facts& facts)
{
    QList<Transaction> returns = returnsOf(facts.ownerFlows);
    qsizetype next = 0;
    QList<OpenDecision> open;
    for (const Decision& decision : dueDecisions(facts)) {
        const QDate since = outstandingSince(decision);
        qint64 returnedFen = 0;
        while (next < returns.size() && returnedFen < decision.covered.sumFen) {
            qint64& restFen = returns[next].amountFen;
            if (restFen > 0 && returns.at(next).transDate >= since) {
                const qint64 takenFen = std::min(restFen, decision.covered.sumFen - returnedFen);
                returnedFen += takenFen;
                restFen -= takenFen;
                if (restFen > 0)
                    break;
            }
            ++next;
        }
        if (returnedFen < decision.covered.sumFen)
            open += { decision, returnedFen };
    }
    return open;
}

void addUnsettledDecisions(QList<Item>& items, const Facts& facts)
{
    for (const auto& [decision, returnedFen] : openDecisions(facts))
        items += { Kind::UnsettledDecision, NoticeLevel::Warning,
            u"往来决定书 %1 已过约定日期，请核对是否已归还"_s.arg(decision.document.docNo),
            u"公司付给股东 %1，约定 %2 前结清；此后登记的股东转入按先后冲抵各份决定，本份已冲抵 "
            "%3，尚差 %4。请核对是否已归还：已归还的请登记流水，需要延期的请另作书面决定。"_s.arg(
                yuanText(decision.covered.sumFen),
                TextRules::dateText(decision.document.settleDate), yuanText(returnedFen),
                yuanText(decision.covered.sumFen - returnedFen)),
            Target::DocumentArchive, { { u"docId"_s, decision.document.id } } };
}

// The balance counts every transfer with the owner, dividends and petty cash as well as loans:
// it is a reason to look, not a debt.
void addYearEndDebt(QList<Item>& items, const Facts& facts)
{
    if (facts.today.month() < yearEndMonth || facts.ownerBalanceFen >= 0)
        return;
    const QString paidOut = yuanText(SaturatingSum::difference(0, facts.ownerBalanceFen));
    items += { Kind::YearEndDebt, NoticeLevel::Warning,
        u"年底前请核对股东往来：公司净付股东 %1"_s.arg(paidOut),
        u"股东往来净额显示公司多付股东 %1（含借款、备用金、分红等）；已按决定分配的利润不属于欠款。"
        "股东从公司取得的借款，年度终了仍未归还的，可能被视为分红而要求纳税。如有借款，请在 "
        "%2 年 12 月 31 日前归还，或准备好用于公司经营的证明，并咨询税务专业人士。"_s.arg(
            paidOut, QString::number(facts.today.year())),
        Target::Ledger, { { u"category"_s, codeOf(Category::ShareholderOut) } } };
}

void addUnlinkedVouchers(QList<Item>& items, const Facts& facts)
{
    if (facts.unlinkedVouchers <= 0)
        return;
    items += { Kind::UnlinkedVouchers, NoticeLevel::Info,
        u"%1 张凭证还没有关联"_s.arg(facts.unlinkedVouchers),
        u"请把它们关联到对应的流水、项目或合同，否则看不出它们证明哪一笔款项。"_s, Target::Vouchers,
        { { u"linked"_s, u"none"_s } } };
}

void addLargeEntriesWithoutVoucher(QList<Item>& items, const Facts& facts)
{
    const QList<qint64>& ids = facts.largeEntriesWithoutVoucher;
    // Without a threshold every entry would be large.
    if (ids.isEmpty() || facts.profile.largeAmountFen <= 0)
        return;
    items += { Kind::LargeEntriesWithoutVoucher, NoticeLevel::Warning,
        u"%1 笔大额流水没有凭证"_s.arg(ids.size()),
        u"单笔达到 %1 的流水应有银行回单、合同或发票。请上传并关联凭证。"_s.arg(
            yuanText(facts.profile.largeAmountFen)),
        Target::Ledger, { { u"txIds"_s, variantsOf(ids) } } };
}

} // namespace

QList<Item> itemsOf(const Facts& facts)
{
    QList<Item> items;
    for (const auto addItems : { addHighRiskEntries, addYearEndDebt, addUncoveredTransfers,
             addUnsettledDecisions, addLargeEntriesWithoutVoucher, addMissingAnnualDecision,
             addMissingIndependenceStatement, addUnlinkedVouchers })
        addItems(items, facts);
    std::stable_sort(items.begin(), items.end(),
        [](const Item& a, const Item& b) { return a.severity > b.severity; });
    return items;
}

} // namespace TodoList
