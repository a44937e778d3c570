#include "db/TransactionDao.h"
#include "services/figures/LedgerStatistics.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "support/Warnings.h"

#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using namespace LedgerStatistics;
using TestLedger::add;
using TestLedger::entry;

namespace {

bool addYear()
{
    using enum Category;
    Transaction privateExpense = entry(u"2025-11-05"_s, BusinessExpense, Direction::Out, 30);
    privateExpense.ownerAccountType = AccountType::Private;
    return add(entry(u"2025-11-02"_s, BusinessIncome, Direction::In, 1'000)) && add(privateExpense)
        && add(entry(u"2025-11-28"_s, ShareholderOut, Direction::Out, 7))
        && add(entry(u"2025-10-21"_s, BusinessIncome, Direction::In, 400))
        && add(entry(u"2025-10-22"_s, ShareholderIn, Direction::In, 5))
        && add(entry(u"2024-11-21"_s, BusinessIncome, Direction::In, 2'000));
}

QString textOf(const Totals& totals)
{
    return u"%1: +%2 -%3"_s.arg(QString::number(totals.count), QString::number(totals.incomeFen),
        QString::number(totals.expenseFen));
}

} // namespace

class TestLedgerStatistics final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void entriesAddUp()
    {
        QCOMPARE(totalsOf(QList<Transaction>()), Totals());
        const QList<Transaction> entries { entry({}, Category::Other, Direction::In, 5'000'000'000),
            entry({}, Category::Salary, Direction::Out, 7),
            entry({}, Category::Other, Direction::Out, 3) };
        const Totals totals = totalsOf(entries);
        QCOMPARE(textOf(totals), u"3: +5000000000 -10"_s);
        QCOMPARE(totals.netFen(), qint64 { 4'999'999'990 });
    }

    void sumsStopAtTheLimits()
    {
        using Limits = std::numeric_limits<qint64>;
        using namespace SaturatingSum;
        QCOMPARE(sum(2, 3), qint64 { 5 });
        QCOMPARE(sum(Limits::max(), 0), Limits::max());
        QCOMPARE(sum(Limits::max(), 1), Limits::max());
        QCOMPARE(sum(Limits::min(), -1), Limits::min());
        QCOMPARE(sum(Limits::min(), Limits::max()), qint64 { -1 });
        QCOMPARE(difference(2, 3), qint64 { -1 });
        QCOMPARE(difference(Limits::min(), 1), Limits::min());
        QCOMPARE(difference(0, Limits::min()), Limits::max());
        QCOMPARE(difference(-1, Limits::min()), Limits::max());
        QCOMPARE(difference(-2, Limits::min()), Limits::max() - 1);

        const QList<Transaction> entries { entry({}, Category::Other, Direction::In, Limits::max()),
            entry({}, Category::Other, Direction::In, 1) };
        QCOMPARE(totalsOf(entries).incomeFen, Limits::max());
        const QList<CategoryStat> stats { { Category::Other, 1, Limits::max(), Limits::max() },
            { Category::Salary, 1, 1, 1 } };
        QCOMPARE(totalsOf(stats), (Totals { 2, Limits::max(), Limits::max() }));
        QCOMPARE((MonthFigures { {}, Limits::max(), -1 }).netFen(), Limits::max());
    }

    void theLastLineOfACategoryReportAddsUp()
    {
        QVERIFY(addYear());
        QCOMPARE(textOf(totalsOf(TransactionDao().categoryStats({}, {}))), u"6: +3405 -37"_s);
        QCOMPARE(totalsOf(TransactionDao().categoryStats({}, {})), accountTotals({}).value().all);
    }

    void accountsAddUpToAll()
    {
        const auto totals = accountTotalsOf({ { AccountType::Company, Direction::In, 2, 100 },
            { AccountType::Company, Direction::Out, 1, 30 },
            { AccountType::Private, Direction::Out, 4, 5 },
            { AccountType::Unknown, Direction::In, 1, 9 } });
        QCOMPARE(textOf(totals.company), u"3: +100 -30"_s);
        QCOMPARE(textOf(totals.privateAccount), u"4: +0 -5"_s);
        QCOMPARE(textOf(totals.all), u"8: +109 -35"_s);
    }

    void missingMonthsAreZero()
    {
        const auto series = monthlySeriesOf({ { u"2024-12"_s, 5, 2 }, { u"2025-02"_s, 0, 3 },
                                                { u"2020-01"_s, 9, 9 }, { u"broken"_s, 9, 9 } },
            { QDate(2024, 11, 15), QDate(2025, 2, 1) });
        QCOMPARE(series,
            (QList<MonthFigures> { { QDate(2024, 11, 1), 0, 0 }, { QDate(2024, 12, 1), 5, 2 },
                { QDate(2025, 1, 1), 0, 0 }, { QDate(2025, 2, 1), 0, 3 } }));
        QCOMPARE(series.at(1).netFen(), qint64 { 3 });
        QCOMPARE(series.at(3).netFen(), qint64 { -3 });
        QVERIFY(monthlySeriesOf({}, {}).isEmpty());
    }

    void twelveMonthsEndWithToday()
    {
        QCOMPARE(
            lastTwelveMonths({ 2025, 11, 21 }), (DateRange { { 2024, 12, 1 }, { 2025, 11, 30 } }));
        QCOMPARE(
            lastTwelveMonths({ 2025, 12, 31 }), (DateRange { { 2025, 1, 1 }, { 2025, 12, 31 } }));
        QCOMPARE(
            lastTwelveMonths({ 2024, 2, 29 }), (DateRange { { 2023, 3, 1 }, { 2024, 2, 29 } }));
    }

    void sharesAddUpToAHundred_data()
    {
        addColumns<RiskLevelCounts, QString>("counts", "shares");
        using Counts = RiskLevelCounts;
        addCase("no entries", Counts {}, u"0.0% 0.0% 0.0% 0.0%"_s);
        addCase("one level", Counts { 0, 0, 0, 7 }, u"0.0% 0.0% 0.0% 100.0%"_s);
        addCase("even", Counts { 1, 1, 1, 1 }, u"25.0% 25.0% 25.0% 25.0%"_s);
        addCase("thirds: the rest goes to the graver level", Counts { 1, 1, 1, 0 },
            u"33.4% 33.3% 33.3% 0.0%"_s);
        addCase("two thirds round up", Counts { 1, 0, 0, 2 }, u"33.3% 0.0% 0.0% 66.7%"_s);
        addCase("too small to show", Counts { 1, 0, 0, 9'999 }, u"0.0% 0.0% 0.0% 100.0%"_s);
        addCase("just large enough", Counts { 6, 0, 0, 9'994 }, u"0.1% 0.0% 0.0% 99.9%"_s);
    }

    void sharesAddUpToAHundred()
    {
        QFETCH(RiskLevelCounts, counts);
        QStringList texts;
        for (const RiskShare& share : riskSharesOf(counts))
            texts += shareText(share.permille);
        QTEST(texts.join(u' '), "shares");
    }

    void randomSharesAddUpAndStayClose()
    {
        std::mt19937 random(3);
        for (int round = 0; round < 2'000; ++round) {
            const auto pick
                = [&] { return static_cast<qint64>(random() % (1U << (random() % 20))); };
            const RiskLevelCounts counts { pick(), pick(), pick(), pick() + 1 };
            const qint64 total = counts.high + counts.medium + counts.low + counts.normal;
            const auto shares = riskSharesOf(counts);
            int sum = 0;
            for (const RiskShare& share : shares) {
                sum += share.permille;
                const double exact
                    = 1000.0 * static_cast<double>(share.count) / static_cast<double>(total);
                QVERIFY(qAbs(share.permille - exact) < 1.0);
            }
            QCOMPARE(sum, 1000);
            QCOMPARE(shares.first().level, RiskLevel::High);
            QCOMPARE(shares.last().count, counts.normal);
        }
    }

    void changesAreNamed_data()
    {
        addColumns<qint64, qint64, QString>("current", "earlier", "text");
        const auto row = [](const char* name, qint64 current, qint64 earlier, const QString& text) {
            addCase(name, current, earlier, text);
        };
        row("more", 1'125, 1'000, u"+12.5%"_s);
        row("less", 970, 1'000, u"-3.0%"_s);
        row("gone", 0, 1'000, u"-100.0%"_s);
        row("the same", 1'000, 1'000, u"持平"_s);
        row("nothing before", 1'000, 0, u"—"_s);
        row("nothing at all", 0, 0, u"—"_s);
        row("many times", 50'000, 1'000, u"+4900.0%"_s);
        row("rounded", 2'000'001, 3'000'000, u"-33.3%"_s);
        row("a smaller loss", -500, -1'000, u"+50.0%"_s);
        row("a larger loss", -1'500, -1'000, u"-50.0%"_s);
        row("from loss to profit", 500, -1'000, u"+150.0%"_s);
        row("a fall that rounds to nothing", 999'999, 1'000'000, u"持平"_s);
        row("a rise that rounds to nothing", 1'000'499, 1'000'000, u"持平"_s);
        row("the least that shows", 999'500, 1'000'000, u"-0.1%"_s);
        row("beyond all measure", std::numeric_limits<qint64>::max(), 1,
            u"+100000000000000000.0%"_s);
        row("from profit to loss", -500, 1'000, u"-150.0%"_s);
    }

    void changesAreNamed()
    {
        QFETCH(qint64, current);
        QFETCH(qint64, earlier);
        QTEST(changeText(current, earlier), "text");
    }

    void rangesAreReadAndCompared()
    {
        QVERIFY(addYear());
        const QDate today(2025, 11, 21);
        const auto compared = comparedTotals(rangeOf(Period::ThisMonth, today), today).value();
        QCOMPARE(textOf(compared.totals.all), u"3: +1000 -37"_s);
        QCOMPARE(textOf(compared.totals.company), u"2: +1000 -7"_s);
        QCOMPARE(textOf(compared.totals.privateAccount), u"1: +0 -30"_s);
        QVERIFY(compared.comparison);
        // Of the running month only what is past counts, as of the others.
        QCOMPARE(textOf(compared.comparison->current), u"2: +1000 -30"_s);
        QCOMPARE(textOf(compared.comparison->previous), u"1: +400 -0"_s);
        QCOMPARE(textOf(compared.comparison->yearAgo), u"1: +2000 -0"_s);
        const auto everything = comparedTotals(rangeOf(Period::All, today), today).value();
        QCOMPARE(everything.totals.all.count, qint64 { 6 });
        QVERIFY(!everything.comparison);
        QCOMPARE(ownerBalanceFen(rangeOf(Period::LastYear, today)), qint64 { 0 });
        QCOMPARE(ownerBalanceFen(rangeOf(Period::ThisYear, today)), qint64 { -2 });
    }

    void monthsAreReadWithGaps()
    {
        QVERIFY(addYear());
        const auto series = monthlySeries(lastTwelveMonths(QDate(2025, 11, 21))).value();
        QCOMPARE(series.size(), 12);
        QCOMPARE(series.first(), (MonthFigures { QDate(2024, 12, 1), 0, 0 }));
        QCOMPARE(series.at(10), (MonthFigures { QDate(2025, 10, 1), 405, 0 }));
        QCOMPARE(series.last(), (MonthFigures { QDate(2025, 11, 1), 1'000, 37 }));
    }

    void cardsCountLevelsInForceAndLooseVouchers()
    {
        QCOMPARE(cardCounts(), CardCounts());
        QVERIFY(addYear());
        TransactionDao entries;
        QVERIFY(entries.updateAutoRisk(1, RiskLevel::High, {})
            && entries.updateAutoRisk(2, RiskLevel::High, {})
            && entries.updateAutoRisk(3, RiskLevel::Medium, {})
            && entries.updateAutoRisk(4, RiskLevel::Low, {})
            && entries.setManualOverride(2, RiskLevel::Low, {}));
        QVERIFY(
            TestLedger::addVoucher(1) && TestLedger::addVoucher(0) && TestLedger::addVoucher(0));
        QCOMPARE(cardCounts(), (CardCounts { 1, 1, 2, 2 }));
    }

    void aFailedReadIsNotZero()
    {
        const QDate today(2025, 11, 21);
        QVERIFY(addYear());
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE vouchers RENAME TO hidden"_s }), QString());
        expectWarnings({ u"SQL error: no such table: vouchers"_s });
        QVERIFY(!cardCounts());
        QVERIFY(accountTotals({}) && ownerBalanceFen({}));
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE hidden RENAME TO vouchers"_s,
                     u"ALTER TABLE transactions RENAME TO hidden"_s }),
            QString());
        expectWarnings(QStringList(5, u"SQL error: no such table: transactions"_s));
        QVERIFY(!accountTotals({}));
        QVERIFY(!comparedTotals(rangeOf(Period::ThisMonth, today), today));
        QVERIFY(!monthlySeries(lastTwelveMonths(today)));
        QVERIFY(!ownerBalanceFen({}));
        QVERIFY(!cardCounts());
    }
};

static const RegisteredTest<TestLedgerStatistics> registered;

#include "TestLedgerStatistics.moc"
