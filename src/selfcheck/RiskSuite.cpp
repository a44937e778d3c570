#include "db/TransactionDao.h"
#include "selfcheck/CheckDao.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Samples.h"
#include "selfcheck/Suites.h"
#include "services/risk/RiskRules.h"
#include "services/risk/RiskService.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

void checkRules(Findings& findings)
{
    const RiskRules::Circumstances usual { .largeAmountFen = 5'000'000, .windowDays = 30 };
    const auto levelOf = [](const Transaction& entry, const RiskRules::Circumstances& around) {
        return RiskRules::evaluate(entry, around).level;
    };
    Transaction entry = Samples::riskyEntry();
    findings.expect(levelOf(entry, usual) == RiskLevel::High, u"私户收取经营款项没有判为高风险"_s);

    entry.ownerAccountType = AccountType::Company;
    findings.expect(levelOf(entry, usual) == RiskLevel::Normal, u"对公收取经营款项没有判为正常"_s);

    entry.amountFen = usual.largeAmountFen;
    findings.expect(levelOf(entry, usual) == RiskLevel::Low, u"无凭证的大额流水没有判为预警"_s);

    RiskRules::Circumstances frequent = usual;
    frequent.inFrequentGroup = true;
    frequent.groupSize = 3;
    findings.expect(levelOf(entry, frequent) == RiskLevel::Medium, u"频繁往来没有判为中风险"_s);
}

void checkGroups(Findings& findings)
{
    const QDate day(2024, 2, 1);
    const QList<RiskRules::Flow> flows { { 1, day }, { 2, day.addDays(28) }, { 3, day.addDays(29) },
        { 4, day.addDays(90) } };
    const RiskRules::Frequency frequency;
    findings.expect(RiskRules::frequentGroups(flows, {}, frequency)
            == QHash<qint64, int> { { 1, 3 }, { 2, 3 }, { 3, 3 } },
        u"频繁往来的分组不正确"_s);
    findings.expect(RiskRules::frequentGroups(flows, { 2 }, frequency)
            == QHash<qint64, int> { { 1, 3 }, { 3, 3 } },
        u"决定书覆盖的往来没有排除"_s);
}

// The whole ledger once more: the result must be what is stored.
void evaluateLedger(Findings& findings)
{
    const QString levels = u"SELECT id || ' ' || risk_auto_level FROM transactions ORDER BY id"_s;
    CheckDao rows;
    const std::optional<QStringList> before = rows.texts(levels);
    TransactionDao entries;
    Transaction probe = Samples::riskyEntry();
    if (!findings.expect(before.has_value(), u"流水无法读取：%1"_s.arg(rows.lastError()))
        || !findings.expect(entries.insert(probe), u"流水无法写入：%1"_s.arg(entries.lastError())))
        return;
    if (before->size() > Suites::largestEvaluatedLedger) {
        findings.remark(u"流水超过 %1 笔，未全部重新判断"_s.arg(Suites::largestEvaluatedLedger));
        return;
    }
    RiskService().reevaluateAll();
    const std::optional<Transaction> judged = entries.findById(probe.id);
    findings.expect(
        judged && judged->riskLevel == RiskLevel::High, u"重新判断风险后结果没有写入"_s);

    const QStringList judgedRows = rows.texts(levels).value_or(QStringList());
    const QSet<QString> after(judgedRows.begin(), judgedRows.end());
    QStringList changed;
    for (const QString& row : *before) {
        if (!after.contains(row))
            changed += row.section(u' ', 0, 0);
    }
    findings.expect(changed.isEmpty(),
        u"%1 笔流水的风险等级已过期（如 #%2），请在「风险提醒标准」中重新保存一次标准"_s.arg(
            QString::number(changed.size()), changed.value(0)));
}

} // namespace

void Suites::riskRules(Findings& findings)
{
    checkRules(findings);
    checkGroups(findings);
    evaluateLedger(findings);
}
