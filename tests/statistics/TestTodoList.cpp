#include "core/TextRules.h"
#include "services/figures/TodoList.h"
#include "support/TestCase.h"
#include "support/TestLedger.h"

using namespace Qt::StringLiterals;
using TestLedger::entry;
using TodoList::Facts;
using TodoList::Item;
using TodoList::Kind;

namespace {

const QDate today(2025, 6, 15);

// Nothing to see to: a statement of this year is all that a ledger needs.
Facts cleanFacts()
{
    Facts facts;
    facts.today = today;
    facts.latestIndependenceStatement = QDate(2025, 1, 1);
    return facts;
}

Transaction flow(
    qint64 id, const QString& date, Direction direction = Direction::Out, qint64 fen = 10'000)
{
    const auto category
        = direction == Direction::In ? Category::ShareholderIn : Category::ShareholderOut;
    Transaction made = entry(date, category, direction, fen);
    made.id = id;
    return made;
}

QList<qint64> idsOf(const Item& item)
{
    QList<qint64> ids;
    for (const QVariant& id : item.parameters.value(u"txIds"_s).toList())
        ids += id.toLongLong();
    return ids;
}

TodoList::Decision decision(const QString& docDate, const QString& settleDate)
{
    TodoList::Decision made;
    made.document.id = 4;
    made.document.docNo = u"KYR-FD-2025-0001"_s;
    made.document.docType = DocType::FundDecision;
    made.document.fundDirection = Direction::Out;
    made.document.docDate = TextRules::dateFromText(docDate);
    made.document.settleDate = TextRules::dateFromText(settleDate);
    made.covered = { 4, 2, 50'000, made.document.docDate };
    return made;
}

} // namespace

class TestTodoList final : public TestCase {
    Q_OBJECT

private slots:
    void countsSayWhereToLook()
    {
        Facts facts = cleanFacts();
        facts.highRiskCount = 3;
        facts.profile.largeAmountFen = 2'000'050;
        facts.largeEntriesWithoutVoucher = { 9, 4 };
        facts.entriesLastYear = 1;
        facts.unlinkedVouchers = 2;
        const auto items = TodoList::itemsOf(facts);
        QCOMPARE(items.size(), 4);
        QCOMPARE(items[0].title, u"3 笔高风险流水待处理"_s);
        QCOMPARE(items[0].severity, NoticeLevel::Danger);
        QCOMPARE(items[0].target, TodoList::Target::Ledger);
        QCOMPARE(items[0].parameters, (QVariantMap { { u"risk"_s, u"high"_s } }));
        QCOMPARE(items[1].title, u"2 笔大额流水没有凭证"_s);
        QVERIFY(items[1].text.contains(u"20,000.50 元"_s));
        QCOMPARE(items[1].target, TodoList::Target::Ledger);
        QCOMPARE(idsOf(items[1]), (QList<qint64> { 9, 4 }));
        QCOMPARE(items[2].title, u"缺少 2024 年度股东决定书"_s);
        QCOMPARE(items[2].target, TodoList::Target::AnnualDecision);
        QCOMPARE(items[2].parameters, (QVariantMap { { u"year"_s, 2024 } }));
        QCOMPARE(items[3].title, u"2 张凭证还没有关联"_s);
        QCOMPARE(items[3].target, TodoList::Target::Vouchers);
        QCOMPARE(items[3].parameters, (QVariantMap { { u"linked"_s, u"none"_s } }));
    }

    void theYearEndItemComesInNovember()
    {
        const auto itemsOn = [](QDate day, qint64 balanceFen) {
            Facts facts = cleanFacts();
            facts.today = day;
            facts.latestIndependenceStatement = day;
            facts.ownerBalanceFen = balanceFen;
            return TodoList::itemsOf(facts);
        };
        const QDate november(2025, 11, 1);
        QVERIFY(itemsOn(november.addDays(-1), -100).isEmpty());
        QVERIFY(itemsOn({ 2026, 1, 1 }, -100).isEmpty());
        QVERIFY(itemsOn(november, 0).isEmpty());
        QVERIFY2(itemsOn(november, 100).isEmpty(), "the company owes");
        QCOMPARE(itemsOn({ 2025, 12, 31 }, -1).size(), 1);
        QVERIFY(itemsOn({ 2025, 12, 31 }, -1).first().title.contains(u"0.01 元"_s));

        const auto items = itemsOn(november, -100);
        QCOMPARE(items.size(), 1);
        QCOMPARE(items.first().kind, Kind::YearEndDebt);
        QCOMPARE(items.first().severity, NoticeLevel::Warning);
        // Dividends and petty cash are in the figure, so it must not be called a debt.
        QVERIFY(!items.first().title.contains(u"欠"_s));
        QVERIFY(!items.first().text.contains(u"尚欠"_s));
        QVERIFY(items.first().title.contains(u"1.00 元"_s));
        for (const QString& word : { u"股东往来净额"_s, u"备用金、分红"_s, u"不属于欠款"_s,
                 u"归还"_s, u"2025 年 12 月 31 日"_s, u"咨询税务专业人士"_s })
            QVERIFY2(items.first().text.contains(word), qPrintable(items.first().text));
    }

    void aDecidedYearIsNotAskedForAgain()
    {
        Facts facts = cleanFacts();
        facts.entriesLastYear = 9;
        facts.hasAnnualDecisionLastYear = true;
        QVERIFY(TodoList::itemsOf(facts).isEmpty());
    }

    void noThresholdMakesNoLargeEntries()
    {
        Facts facts = cleanFacts();
        facts.largeEntriesWithoutVoucher = { 1 };
        for (const qint64 fen : { -1, 0, 1 }) {
            facts.profile.largeAmountFen = fen;
            QCOMPARE(TodoList::itemsOf(facts).size(), fen > 0 ? 1 : 0);
        }
    }

    void uncoveredTransfersAskForADecision_data()
    {
        addColumns<QString, QList<int>, QStringList>("directions", "covered", "found");
        const QString out = u"笔公司付给股东的资金缺少往来决定书: "_s;
        const QString in = u"笔股东转入公司的资金缺少往来决定书: "_s;
        using Ids = QList<int>;
        addCase("too few", u"--"_s, Ids {}, QStringList());
        addCase("out only", u"---"_s, Ids {}, QStringList { u"3 "_s + out + u"1 2 3"_s });
        addCase("in only", u"+++"_s, Ids {}, QStringList { u"3 "_s + in + u"1 2 3"_s });
        addCase("an item for each direction", u"-+-"_s, Ids {},
            QStringList { u"2 "_s + out + u"1 3"_s, u"1 "_s + in + u"2"_s });
        addCase("covered ones are left out", u"-+--"_s, Ids { 1, 2 },
            QStringList { u"2 "_s + out + u"3 4"_s });
        addCase("all covered", u"---"_s, Ids { 1, 2, 3 }, QStringList());
    }

    void uncoveredTransfersAskForADecision()
    {
        QFETCH(QString, directions);
        QFETCH(QList<int>, covered);
        Facts facts = cleanFacts();
        for (qsizetype i = 0; i < directions.size(); ++i)
            facts.ownerFlows += flow(i + 1, u"2025-03-0%1"_s.arg(i + 1),
                directions.at(i) == u'+' ? Direction::In : Direction::Out);
        for (const int id : covered)
            facts.coveredIds += id;
        QStringList found;
        for (const Item& item : TodoList::itemsOf(facts)) {
            QCOMPARE(item.kind, Kind::UncoveredTransfers);
            QCOMPARE(item.target, TodoList::Target::FundDecision);
            QCOMPARE(item.parameters.value(u"fund"_s), QVariant(true));
            QVERIFY(item.text.contains(u"合计 %1.00 元"_s.arg(idsOf(item).size() * 100)));
            QStringList ids;
            for (const qint64 id : idsOf(item))
                ids += QString::number(id);
            found += item.title + u": "_s + ids.join(u' ');
        }
        QTEST(found, "found");
    }

    void aReviewedTransferIsNotAskedForAgain()
    {
        Facts facts = cleanFacts();
        for (int i = 1; i <= 4; ++i)
            facts.ownerFlows += flow(i, u"2025-03-0%1"_s.arg(i));
        facts.ownerFlows[1].riskManualOverride = RiskLevel::Normal;
        facts.ownerFlows[2].riskManualOverride = RiskLevel::High;
        const auto items = TodoList::itemsOf(facts);
        QCOMPARE(items.size(), 1);
        QCOMPARE(idsOf(items.first()), (QList<qint64> { 1, 3, 4 }));
    }

    void statementsAgeInAYear()
    {
        const auto itemsAfter = [](QDate latest) {
            Facts facts = cleanFacts();
            facts.latestIndependenceStatement = latest;
            return TodoList::itemsOf(facts);
        };
        QVERIFY(itemsAfter(today).isEmpty());
        QVERIFY2(itemsAfter({ 2024, 6, 15 }).isEmpty(), "twelve months ago");
        QCOMPARE(itemsAfter({ 2024, 6, 14 }).size(), 1);
        QVERIFY(itemsAfter({ 2024, 6, 14 }).first().text.contains(u"2024-06-14"_s));
        const auto items = itemsAfter({});
        QCOMPARE(items.size(), 1);
        QCOMPARE(items.first().target, TodoList::Target::IndependenceStatement);
        QCOMPARE(
            items.first().parameters, (QVariantMap { { u"kind"_s, u"independence_statement"_s } }));
    }

    void overdueDecisionsAreRemarked_data()
    {
        addColumns<QString, QString, bool>("docDate", "settleDate", "remarked");
        addCase("a day past", u"2025-01-10"_s, u"2025-06-14"_s, true);
        addCase("due today", u"2025-01-10"_s, u"2025-06-15"_s, false);
        addCase("due later", u"2025-01-10"_s, u"2025-12-31"_s, false);
        addCase("no day agreed", u"2025-01-10"_s, QString(), false);
        addCase("decided twelve months ago", u"2024-06-15"_s, u"2024-12-31"_s, true);
        addCase("decided longer ago", u"2024-06-14"_s, u"2024-12-31"_s, false);
    }

    void overdueDecisionsAreRemarked()
    {
        QFETCH(QString, docDate);
        QFETCH(QString, settleDate);
        QFETCH(bool, remarked);
        Facts facts = cleanFacts();
        facts.fundDecisions = { decision(docDate, settleDate) };
        auto items = TodoList::itemsOf(facts);
        QCOMPARE(items.size(), remarked ? 1 : 0);
        if (remarked) {
            QCOMPARE(items.first().kind, Kind::UnsettledDecision);
            QCOMPARE(items.first().title,
                u"往来决定书 KYR-FD-2025-0001 已过约定日期，请核对是否已归还"_s);
            QVERIFY(items.first().text.contains(u"500.00 元"_s));
            QVERIFY(items.first().text.contains(settleDate));
            QCOMPARE(items.first().target, TodoList::Target::DocumentArchive);
            QCOMPARE(items.first().parameters, (QVariantMap { { u"docId"_s, qint64 { 4 } } }));
        }
        facts.fundDecisions.first().document.fundDirection = Direction::In;
        QVERIFY2(
            TodoList::itemsOf(facts).isEmpty(), "money from the owner is not the owner's debt");
    }

    void whatCountsAsReturned_data()
    {
        addColumns<QList<Transaction>, bool>("flows", "settled");
        using Flows = QList<Transaction>;
        const QString after = u"2025-02-01"_s;
        addCase("nothing", Flows {}, false);
        addCase("one fen short", Flows { flow(1, after, Direction::In, 49'999) }, false);
        addCase("all at once", Flows { flow(1, after, Direction::In, 50'000) }, true);
        addCase("in parts, the last one late",
            Flows { flow(1, after, Direction::In, 20'000),
                flow(2, u"2025-06-10"_s, Direction::In, 30'000) },
            true);
        addCase("on the day of the first payment",
            Flows { flow(1, u"2025-01-05"_s, Direction::In, 50'000) }, true);
        addCase("before the first payment",
            Flows { flow(1, u"2025-01-04"_s, Direction::In, 50'000) }, false);
        addCase("paid out", Flows { flow(1, after, Direction::Out, 50'000) }, false);
        Transaction reimbursed = entry(after, Category::ExpenseReimburse, Direction::In, 50'000);
        addCase("a reimbursement", Flows { reimbursed }, false);
        Transaction undated = flow(1, QString(), Direction::In, 50'000);
        addCase("without a date", Flows { undated }, false);
    }

    void whatCountsAsReturned()
    {
        QFETCH(QList<Transaction>, flows);
        QFETCH(bool, settled);
        Facts facts = cleanFacts();
        facts.ownerFlows = flows;
        facts.fundDecisions = { decision(u"2025-01-10"_s, u"2025-05-31"_s) };
        // Drawn up five days after the money had left.
        facts.fundDecisions.first().covered.firstDate = QDate(2025, 1, 5);
        QCOMPARE(TodoList::itemsOf(facts).isEmpty(), settled);
    }

    void everyTransferSettlesOneDecisionOnly_data()
    {
        addColumns<QStringList, QList<Transaction>, QStringList>("decided", "flows", "open");
        using Flows = QList<Transaction>;
        const auto back
            = [](const QString& date, qint64 fen) { return flow(1, date, Direction::In, fen); };
        const QString first = u"2025-01-10"_s;
        const QString second = u"2025-02-10"_s;
        const QStringList both { first, second };
        addCase("one return for two: the later stays open", both,
            Flows { back(u"2025-03-01"_s, 100'000) }, QStringList { second + u": 1,000.00"_s });
        addCase("the order of the archive does not matter", QStringList { second, first },
            Flows { back(u"2025-03-01"_s, 100'000) }, QStringList { second + u": 1,000.00"_s });
        addCase("nothing came back", both, Flows {},
            QStringList { first + u": 1,000.00"_s, second + u": 1,000.00"_s });
        addCase("returned before it was due", QStringList { first },
            Flows { back(u"2025-02-01"_s, 100'000) }, QStringList());
        addCase(
            "one return over both", both, Flows { back(u"2025-03-01"_s, 200'000) }, QStringList());
        addCase("each by its own", both,
            Flows { back(u"2025-02-01"_s, 100'000), back(u"2025-03-01"_s, 100'000) },
            QStringList());
        addCase("too early for the later one", both, Flows { back(u"2025-02-01"_s, 200'000) },
            QStringList { second + u": 1,000.00"_s });
        addCase("in part", QStringList { first }, Flows { back(u"2025-03-01"_s, 40'000) },
            QStringList { first + u": 600.00"_s });
        addCase("what one leaves over goes to the next", both,
            Flows { back(u"2025-03-01"_s, 130'000), back(u"2025-03-02"_s, 20'000) },
            QStringList { second + u": 500.00"_s });
        addCase("transfers out of order", both,
            Flows { back(u"2025-03-01"_s, 100'000), back(u"2025-02-01"_s, 100'000) },
            QStringList());
        addCase("one no longer asked for takes nothing", QStringList { u"2024-05-01"_s, first },
            Flows { back(u"2025-03-01"_s, 100'000) }, QStringList());
    }

    void everyTransferSettlesOneDecisionOnly()
    {
        QFETCH(QStringList, decided);
        QFETCH(QList<Transaction>, flows);
        Facts facts = cleanFacts();
        facts.ownerFlows = flows;
        for (const QString& day : decided) {
            TodoList::Decision made = decision(day, u"2025-05-31"_s);
            made.document.docNo = day;
            made.covered.sumFen = 100'000;
            facts.fundDecisions += made;
        }
        QStringList open;
        for (const Item& item : TodoList::itemsOf(facts)) {
            QCOMPARE(item.kind, Kind::UnsettledDecision);
            QVERIFY2(item.text.contains(u"公司付给股东 1,000.00 元"_s), qPrintable(item.text));
            open += item.title.section(u' ', 1, 1) + u": "_s
                + item.text.section(u"尚差 "_s, 1).section(u' ', 0, 0);
        }
        QTEST(open, "open");
    }

    void theGravestComesFirst()
    {
        Facts facts;
        facts.today = QDate(2025, 11, 21);
        facts.highRiskCount = 1;
        facts.ownerBalanceFen = -1;
        for (int i = 1; i <= 3; ++i)
            facts.ownerFlows += flow(i, u"2025-03-0%1"_s.arg(i));
        facts.fundDecisions = { decision(u"2025-03-10"_s, u"2025-05-31"_s) };
        facts.largeEntriesWithoutVoucher = { 1 };
        facts.entriesLastYear = 1;
        facts.unlinkedVouchers = 1;
        QList<Kind> kinds;
        NoticeLevel last = NoticeLevel::Danger;
        for (const Item& item : TodoList::itemsOf(facts)) {
            QVERIFY(item.severity <= last);
            last = item.severity;
            kinds += item.kind;
            QVERIFY(!item.title.isEmpty() && item.text.endsWith(u'。'));
        }
        QCOMPARE(kinds,
            (QList<Kind> { Kind::HighRiskEntries, Kind::YearEndDebt, Kind::UncoveredTransfers,
                Kind::UnsettledDecision, Kind::LargeEntriesWithoutVoucher,
                Kind::MissingAnnualDecision, Kind::MissingIndependenceStatement,
                Kind::UnlinkedVouchers }));
    }
};

static const RegisteredTest<TestTodoList> registered;

#include "TestTodoList.moc"
