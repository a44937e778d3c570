#include "core/TextRules.h"
#include "db/DocumentDao.h"
#include "db/TransactionDao.h"
#include "services/figures/TodoList.h"
#include "services/risk/RiskService.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "support/Warnings.h"

using namespace Qt::StringLiterals;
using TestLedger::add;
using TestLedger::entry;
using TodoList::Kind;

namespace {

const QDate today(2025, 11, 21);

bool addDocument(DocType type, const QString& date, int year)
{
    DocumentDao documents;
    DocumentRecord document;
    document.docType = type;
    document.docYear = year;
    document.docDate = TextRules::dateFromText(date);
    document.docNo = documents.nextDocNo(type, year);
    return documents.insert(document);
}

QList<Kind> kinds()
{
    QList<Kind> found;
    for (const TodoList::Item& item : TodoList::itemsOf(TodoList::readFacts(today)))
        found += item.kind;
    return found;
}

// One thing of every kind to see to.
bool addUntidyLedger()
{
    using enum Category;
    Transaction income = entry(u"2025-02-01"_s, BusinessIncome, Direction::In, 6'000'000);
    income.ownerAccountType = AccountType::Private;
    return add(income) && add(entry(u"2025-03-01"_s, ShareholderOut, Direction::Out, 30'000))
        && add(entry(u"2025-03-02"_s, ShareholderOut, Direction::Out, 20'000))
        && add(entry(u"2025-03-03"_s, ShareholderIn, Direction::In, 40'000))
        && add(entry(u"2024-12-31"_s, TaxFee, Direction::Out))
        && add(entry(u"2025-11-22"_s, ShareholderIn, Direction::In, 99'000))
        && TestLedger::addFundDecision({ 2, 3 }, u"2025-03-05"_s, u"2025-06-30"_s) > 0
        && TestLedger::addVoucher(0) > 0;
}

} // namespace

class TestTodoFacts final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aNewLedgerHasNoFacts()
    {
        const auto facts = TodoList::readFacts(today);
        QVERIFY(!facts.isIncomplete);
        QCOMPARE(facts.today, today);
        QCOMPARE(kinds(), QList<Kind> { Kind::MissingIndependenceStatement });
    }

    void factsAreReadFromTheStores()
    {
        QVERIFY(addUntidyLedger());
        QVERIFY(addDocument(DocType::IndependenceStatement, u"2024-05-01"_s, 2024));
        QVERIFY(addDocument(DocType::IndependenceStatement, u"2023-05-01"_s, 2023));
        RiskService().reevaluateAll();
        const auto facts = TodoList::readFacts(today);
        QVERIFY(!facts.isIncomplete);
        QCOMPARE(facts.highRiskCount, qint64 { 1 });
        QCOMPARE(facts.ownerFlows.size(), 4);
        QCOMPARE(facts.coveredIds, (QSet<qint64> { 2, 3 }));
        QCOMPARE(facts.entriesLastYear, qint64 { 1 });
        QVERIFY(!facts.hasAnnualDecisionLastYear);
        QCOMPARE(facts.latestIndependenceStatement, QDate(2024, 5, 1));
        QCOMPARE(facts.fundDecisions.size(), 1);
        QCOMPARE(facts.fundDecisions.first().covered.sumFen, qint64 { 50'000 });
        QCOMPARE(facts.fundDecisions.first().document.settleDate, QDate(2025, 6, 30));
        QVERIFY2(facts.ownerBalanceFen == -10'000, "tomorrow's transfer has not come yet");
        QCOMPARE(facts.unlinkedVouchers, qint64 { 1 });
        QCOMPARE(facts.largeEntriesWithoutVoucher, QList<qint64> { 1 });

        // The transfer of tomorrow settles the decision: it is entered, so it is known.
        QCOMPARE(kinds(),
            (QList<Kind> { Kind::HighRiskEntries, Kind::YearEndDebt, Kind::UncoveredTransfers,
                Kind::LargeEntriesWithoutVoucher, Kind::MissingAnnualDecision,
                Kind::MissingIndependenceStatement, Kind::UnlinkedVouchers }));
        QVERIFY(TransactionDao().remove(6));
        QVERIFY(kinds().contains(Kind::UnsettledDecision));
        QVERIFY(addDocument(DocType::AnnualDecision, u"2025-01-31"_s, 2024));
        QVERIFY(!kinds().contains(Kind::MissingAnnualDecision));
        QVERIFY(TestLedger::addVoucher(1));
        QVERIFY(!kinds().contains(Kind::LargeEntriesWithoutVoucher));
    }

    void whatCannotBeReadIsRemarked()
    {
        QVERIFY(addUntidyLedger());
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE vouchers RENAME TO hidden"_s }), QString());
        expectWarnings({ u"SQL error: no such table: vouchers"_s });
        const auto facts = TodoList::readFacts(today);
        QVERIFY(facts.isIncomplete);
        QCOMPARE(facts.unlinkedVouchers, qint64 { 0 });
        QCOMPARE(facts.entriesLastYear, qint64 { 1 });
    }
};

static const RegisteredTest<TestTodoFacts> registered;

#include "TestTodoFacts.moc"
