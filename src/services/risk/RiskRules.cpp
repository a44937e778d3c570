#include "services/risk/RiskRules.h"

#include "core/Money.h"
#include "core/TextRules.h"

#include <algorithm>
#include <deque>

using namespace Qt::StringLiterals;

namespace RiskRules {

namespace {

// An explanation shorter than this says nothing that would convince a court.
constexpr qsizetype shortestExplanation = 5;

bool isThroughPrivateAccount(const Transaction& entry, Direction direction, Category category)
{
    return entry.direction == direction && entry.ownerAccountType == AccountType::Private
        && entry.category == category;
}

bool isUnexplainedLargeAmount(const Transaction& entry, const Circumstances& circumstances)
{
    return entry.amountFen >= circumstances.largeAmountFen && circumstances.voucherCount == 0
        && TextRules::characterCount(entry.note.trimmed()) < shortestExplanation;
}

// Whole yuan without decimals where there are none.
QString yuanText(qint64 fen)
{
    return fen % 100 == 0 ? QString::number(fen / 100) : Money::formatPlain(fen);
}

void add(RiskResult& result, RiskLevel level, const QString& reason)
{
    result.level = std::min(result.level, level);
    result.reasons += reason;
}

} // namespace

RiskResult evaluate(const Transaction& entry, const Circumstances& circumstances)
{
    RiskResult result;
    if (isThroughPrivateAccount(entry, Direction::In, Category::BusinessIncome))
        add(result, RiskLevel::High,
            u"私户收取经营款项：以股东个人账户收取公司经营收入，是公私财产混同最典型情形，直接触发连带责任推定风险。"_s);
    if (isThroughPrivateAccount(entry, Direction::Out, Category::BusinessExpense))
        add(result, RiskLevel::High,
            u"股东个人账户直接支付公司经营支出，未通过公司账户也未出具往来决定，资金主体不清。"_s);
    if (circumstances.inFrequentGroup)
        add(result, RiskLevel::Medium,
            u"近%1天内公私账户互转达%2笔，该笔未列入资金往来决定书明细，资金性质（借款/备用金/报销）不明，存在混同风险。"_s
                .arg(QString::number(circumstances.windowDays),
                    QString::number(circumstances.groupSize)));
    if (isUnexplainedLargeAmount(entry, circumstances))
        add(result, RiskLevel::Low,
            u"大额转账（≥%1元）缺少书面说明或原始凭证，诉讼中难以证明款项用途与真实性。"_s.arg(
                yuanText(circumstances.largeAmountFen)));
    return result;
}

Frequency frequencyOf(const CompanyProfile& profile)
{
    Frequency frequency;
    if (profile.frequentWindowDays > 0)
        frequency.windowDays = profile.frequentWindowDays;
    if (profile.frequentCount > 0)
        frequency.count = profile.frequentCount;
    return frequency;
}

QHash<qint64, int> frequentGroups(
    const QList<Flow>& flows, const QSet<qint64>& covered, const Frequency& frequency)
{
    QList<Flow> dated;
    dated.reserve(flows.size());
    std::copy_if(flows.begin(), flows.end(), std::back_inserter(dated),
        [](const Flow& flow) { return flow.date.isValid(); });

    // The group that ends with flow i begins at the first flow within its window; both ends only
    // ever move forward.
    QList<qsizetype> begins(dated.size());
    for (qsizetype i = 0, begin = 0; i < dated.size(); ++i) {
        const QDate earliest = dated.at(i).date.addDays(1 - frequency.windowDays);
        while (dated.at(begin).date < earliest)
            ++begin;
        begins[i] = begin;
    }

    // Going backwards, the groups that hold flow j are those that end at j or later and begin at j
    // or earlier. The queue keeps their ends with sizes falling from front to back, so that the
    // largest is always in front.
    QHash<qint64, int> sizes;
    std::deque<qsizetype> ends;
    const auto sizeAt = [&begins](qsizetype end) { return end - begins.at(end) + 1; };
    for (qsizetype j = dated.size() - 1; j >= 0; --j) {
        while (!ends.empty() && begins.at(ends.front()) > j)
            ends.pop_front();
        while (!ends.empty() && sizeAt(ends.back()) <= sizeAt(j))
            ends.pop_back();
        ends.push_back(j);
        const qsizetype largest = sizeAt(ends.front());
        if (largest >= frequency.count && !covered.contains(dated.at(j).id))
            sizes.insert(dated.at(j).id, static_cast<int>(largest));
    }
    return sizes;
}

} // namespace RiskRules
