#include "services/risk/RiskRules.h"
#include "support/TestCase.h"
#include "support/TestLedger.h"

using namespace Qt::StringLiterals;
using RiskRules::Circumstances;
using RiskRules::Flow;

namespace {

const QString privateIncome
    = u"私户收取经营款项：以股东个人账户收取公司经营收入，是公私财产混同最典型情形，直接触发连带责任推定风险。"_s;
const QString privateExpense
    = u"股东个人账户直接支付公司经营支出，未通过公司账户也未出具往来决定，资金主体不清。"_s;

Transaction entryOf(Category category, Direction direction, AccountType owner, qint64 fen = 1)
{
    Transaction entry = TestLedger::entry(u"2025-01-01"_s, category, direction, fen);
    entry.ownerAccountType = owner;
    return entry;
}

Circumstances usual()
{
    return { .largeAmountFen = 5'000'000, .windowDays = 30 };
}

} // namespace

class TestRiskRules final : public TestCase {
    Q_OBJECT

private slots:
    void businessThroughThePrivateAccountIsHigh_data()
    {
        addColumns<Category, Direction, AccountType, QStringList>(
            "category", "direction", "owner", "reasons");
        const auto in = Direction::In;
        const auto out = Direction::Out;
        const auto priv = AccountType::Private;
        addCase(
            "income into it", Category::BusinessIncome, in, priv, QStringList { privateIncome });
        addCase("expense out of it", Category::BusinessExpense, out, priv,
            QStringList { privateExpense });
        addCase("income paid back", Category::BusinessIncome, out, priv, QStringList());
        addCase("expense paid back", Category::BusinessExpense, in, priv, QStringList());
        addCase("income into the company's", Category::BusinessIncome, in, AccountType::Company,
            QStringList());
        addCase("expense out of an unknown one", Category::BusinessExpense, out,
            AccountType::Unknown, QStringList());
        addCase("salary out of it", Category::Salary, out, priv, QStringList());
        addCase("owner's loan into it", Category::ShareholderIn, in, priv, QStringList());
    }

    void businessThroughThePrivateAccountIsHigh()
    {
        QFETCH(Category, category);
        QFETCH(Direction, direction);
        QFETCH(AccountType, owner);
        QFETCH(QStringList, reasons);
        Transaction entry = entryOf(category, direction, owner);
        const auto level = reasons.isEmpty() ? RiskLevel::Normal : RiskLevel::High;
        // Neither the other side's account nor vouchers change what happened.
        for (const AccountType counterparty : allValues<AccountType>()) {
            entry.counterpartyAccountType = counterparty;
            Circumstances circumstances = usual();
            circumstances.voucherCount = 3;
            const auto result = RiskRules::evaluate(entry, circumstances);
            QCOMPARE(result.level, level);
            QCOMPARE(result.reasons, reasons);
        }
    }

    void largeAmountsNeedAnExplanation_data()
    {
        addColumns<qint64, QString, int, bool>("fen", "note", "vouchers", "flagged");
        addCase("at the threshold, no note", qint64 { 5'000'000 }, QString(), 0, true);
        addCase("one fen below", qint64 { 4'999'999 }, QString(), 0, false);
        addCase("far above", qint64 { 9'999'999'999 }, u""_s, 0, true);
        addCase("one voucher", qint64 { 5'000'000 }, QString(), 1, false);
        addCase("note of four characters", qint64 { 5'000'000 }, u"采购款项"_s, 0, true);
        addCase("note of five characters", qint64 { 5'000'000 }, u"采购服务器"_s, 0, false);
        addCase(
            "four characters and blanks", qint64 { 5'000'000 }, u" 　采购款项\n\t　"_s, 0, true);
        addCase("blanks inside count", qint64 { 5'000'000 }, u"采 购 款"_s, 0, false);
        addCase("four characters of two units each", qint64 { 5'000'000 }, u"𠮷𠮷𠮷𠮷"_s, 0, true);
    }

    void largeAmountsNeedAnExplanation()
    {
        QFETCH(qint64, fen);
        QFETCH(QString, note);
        QFETCH(int, vouchers);
        QFETCH(bool, flagged);
        for (const Category category : allValues<Category>()) {
            for (const Direction direction : allValues<Direction>()) {
                Transaction entry = entryOf(category, direction, AccountType::Company, fen);
                entry.note = note;
                Circumstances circumstances = usual();
                circumstances.voucherCount = vouchers;
                const auto result = RiskRules::evaluate(entry, circumstances);
                QCOMPARE(result.level, flagged ? RiskLevel::Low : RiskLevel::Normal);
                QCOMPARE(result.reasons.size(), flagged ? 1 : 0);
            }
        }
    }

    void thresholdsAreNamedInYuan()
    {
        const auto reasonsAt = [](qint64 thresholdFen) {
            const Transaction entry = entryOf(
                Category::Other, Direction::In, AccountType::Company, qMax(thresholdFen, 1LL));
            return RiskRules::evaluate(entry, { .largeAmountFen = thresholdFen }).reasons;
        };
        QCOMPARE(reasonsAt(5'000'000),
            QStringList {
                u"大额转账（≥50000元）缺少书面说明或原始凭证，诉讼中难以证明款项用途与真实性。"_s });
        QVERIFY(reasonsAt(5'000'050).first().startsWith(u"大额转账（≥50000.50元）"_s));
        QVERIFY(reasonsAt(1).first().startsWith(u"大额转账（≥0.01元）"_s));
        QVERIFY2(reasonsAt(0).first().startsWith(u"大额转账（≥0元）"_s), "every entry");
        QVERIFY(reasonsAt(12'345'678'900).first().startsWith(u"大额转账（≥123456789元）"_s));
    }

    void frequentTransfersNameWindowAndSize()
    {
        Circumstances circumstances = usual();
        circumstances.inFrequentGroup = true;
        circumstances.groupSize = 12;
        circumstances.windowDays = 45;
        const auto result = RiskRules::evaluate(
            entryOf(Category::ShareholderOut, Direction::Out, AccountType::Company), circumstances);
        QCOMPARE(result.level, RiskLevel::Medium);
        QCOMPARE(result.reasons,
            QStringList {
                u"近45天内公私账户互转达12笔，该笔未列入资金往来决定书明细，资金性质（借款/备用金/报销）不明，存在混同风险。"_s });
    }

    void everyRuleThatFiresIsNamedUnderTheGravestLevel()
    {
        Circumstances circumstances = usual();
        const Transaction entry
            = entryOf(Category::BusinessIncome, Direction::In, AccountType::Private, 5'000'000);
        auto result = RiskRules::evaluate(entry, circumstances);
        QCOMPARE(result.level, RiskLevel::High);
        QCOMPARE(result.reasons.size(), 2);
        QCOMPARE(result.reasons.first(), privateIncome);
        QVERIFY(result.reasons.last().startsWith(u"大额转账（≥50000元）"_s));

        circumstances.inFrequentGroup = true;
        result = RiskRules::evaluate(entry, circumstances);
        QCOMPARE(result.level, RiskLevel::High);
        QCOMPARE(result.reasons.size(), 3);
        QVERIFY(result.reasons.at(1).startsWith(u"近30天内"_s));

        result = RiskRules::evaluate(
            entryOf(Category::ShareholderIn, Direction::In, AccountType::Company, 5'000'000),
            circumstances);
        QCOMPARE(result.level, RiskLevel::Medium);
        QCOMPARE(result.reasons.size(), 2);
    }

    void thresholdsThatMakeNoSenseGiveWay()
    {
        const auto inForce = [](int days, int count) {
            CompanyProfile profile;
            profile.frequentWindowDays = days;
            profile.frequentCount = count;
            const auto frequency = RiskRules::frequencyOf(profile);
            return QList<int> { frequency.windowDays, frequency.count };
        };
        QCOMPARE(inForce(7, 2), (QList<int> { 7, 2 }));
        QCOMPARE(inForce(1, 1), (QList<int> { 1, 1 }));
        QCOMPARE(inForce(0, 0), (QList<int> { 30, 3 }));
        QCOMPARE(inForce(-5, -1), (QList<int> { 30, 3 }));
        QCOMPARE(inForce(0, 5), (QList<int> { 30, 5 }));
    }

    void groupsSpanTheWindow_data()
    {
        addColumns<QList<int>, QList<int>, QList<int>>("days", "coveredPlaces", "sizes");
        using Days = QList<int>;
        addCase("first and last 29 days apart", Days { 1, 15, 30 }, Days {}, Days { 3, 3, 3 });
        addCase("30 days apart", Days { 1, 15, 31 }, Days {}, Days { 0, 0, 0 });
        addCase("two on a day", Days { 5, 5 }, Days {}, Days { 0, 0 });
        addCase("three on a day", Days { 5, 5, 5 }, Days {}, Days { 3, 3, 3 });
        addCase("half of four covered", Days { 1, 2, 3, 4 }, Days { 0, 2 }, Days { 0, 4, 0, 4 });
        addCase("all covered", Days { 1, 2, 3, 4 }, Days { 0, 1, 2, 3 }, Days { 0, 0, 0, 0 });
        addCase("the largest of its groups counts", Days { 1, 20, 30, 31, 32, 33 }, Days {},
            Days { 3, 5, 5, 5, 5, 5 });
        addCase("two clusters apart", Days { 1, 2, 3, 100, 101, 102, 103 }, Days {},
            Days { 3, 3, 3, 4, 4, 4, 4 });
        addCase("no flow", Days {}, Days {}, Days {});
    }

    void groupsSpanTheWindow()
    {
        QFETCH(QList<int>, days);
        QFETCH(QList<int>, coveredPlaces);
        QFETCH(QList<int>, sizes);
        QList<Flow> flows;
        QSet<qint64> covered;
        for (qsizetype i = 0; i < days.size(); ++i) {
            flows += { i + 1, QDate(2024, 12, 31).addDays(days.at(i)) };
            if (coveredPlaces.contains(i))
                covered += i + 1;
        }
        const auto groups = RiskRules::frequentGroups(flows, covered, {});
        QList<int> found;
        for (const Flow& flow : flows)
            found += groups.value(flow.id, 0);
        QCOMPARE(found, sizes);
        QCOMPARE(groups.size(), sizes.size() - sizes.count(0));
    }
};

static const RegisteredTest<TestRiskRules> registered;

#include "TestRiskRules.moc"
