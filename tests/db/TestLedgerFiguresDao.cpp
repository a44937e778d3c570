#include "db/LedgerFiguresDao.h"
#include "db/LinkDao.h"
#include "db/TransactionDao.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "support/Warnings.h"

using namespace Qt::StringLiterals;
using TestDatabase::run;
using TestLedger::add;
using TestLedger::entry;

namespace {

bool addPrivate(Transaction entry)
{
    entry.ownerAccountType = AccountType::Private;
    return add(entry) > 0;
}

// Two years, both accounts, the three categories between company and owner in both directions.
bool addLedger()
{
    using enum Category;
    return add(entry(u"2024-12-31"_s, ShareholderIn, Direction::In, 9'000'000'000))
        && add(entry(u"2025-01-01"_s, ShareholderOut, Direction::Out, 700))
        && add(entry(u"2025-01-31"_s, ShareholderOut, Direction::In, 50))
        && addPrivate(entry(u"2025-01-31"_s, BusinessIncome, Direction::In, 300))
        && add(entry(u"2025-03-01"_s, ExpenseReimburse, Direction::Out, 20))
        && addPrivate(entry(u"2025-03-02"_s, ShareholderIn, Direction::Out, 4));
}

QString accountText(QDate from, QDate to)
{
    QStringList texts;
    for (const AccountDirectionSum& sum : LedgerFiguresDao().accountSums(from, to))
        texts += QStringList { codeOf(sum.account), codeOf(sum.direction),
            QString::number(sum.count), QString::number(sum.sumFen) }
                     .join(u' ');
    texts.sort();
    return texts.join(u"; "_s);
}

} // namespace

class TestLedgerFiguresDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void accountsAddUp()
    {
        QVERIFY(addLedger());
        QCOMPARE(accountText({}, {}),
            u"company in 2 9000000050; company out 2 720; private in 1 300; private out 1 4"_s);
        QCOMPARE(accountText({ 2025, 1, 1 }, { 2025, 1, 31 }), // both ends included
            u"company in 1 50; company out 1 700; private in 1 300"_s);
        QCOMPARE(accountText({ 2025, 2, 1 }, {}), u"company out 1 20; private out 1 4"_s);
        QCOMPARE(accountText({}, { 2024, 12, 31 }), u"company in 1 9000000000"_s);
        QCOMPARE(accountText({ 2023, 1, 1 }, { 2023, 12, 31 }), QString());
    }

    void theOwnersBalanceCountsTransfersOnly()
    {
        QVERIFY(addLedger());
        const auto balance
            = [](QDate from, QDate to) { return LedgerFiguresDao().ownerBalanceFen(from, to); };
        QCOMPARE(balance({}, {}), 9'000'000'000 - 700 + 50 - 4);
        QCOMPARE(balance({ 2025, 1, 1 }, { 2025, 12, 31 }), -654); // the owner owes the company
        const QDate reimbursed(2025, 3, 1);
        QCOMPARE(balance(reimbursed, reimbursed), 0);
        QCOMPARE(balance({ 2023, 1, 1 }, { 2023, 12, 31 }), 0);
    }

    void fundDecisionsAddUp()
    {
        QVERIFY(addLedger());
        const qint64 first = TestLedger::addFundDecision({ 3, 2 });
        const qint64 second = TestLedger::addFundDecision({ 5 });
        const qint64 other = TestLedger::addFundDecision({ 1 });
        QVERIFY(first && second && other);
        QCOMPARE(
            run({ u"UPDATE documents SET doc_type = 'independence_statement' WHERE id = 3"_s }),
            QString());
        // A voucher of the same number covers nothing.
        QVERIFY(LinkDao().link(SourceType::Voucher, first, TargetType::Transaction, 1));
        QVERIFY(LinkDao().link(SourceType::Document, first, TargetType::Project, 1));
        auto sums = LedgerFiguresDao().fundDecisionSums();
        QCOMPARE(sums.size(), 2);
        QCOMPARE(sums.first().documentId, first);
        QCOMPARE(sums.first().count, qint64 { 2 });
        QCOMPARE(sums.first().sumFen, qint64 { 750 });
        QCOMPARE(sums.first().firstDate, QDate(2025, 1, 1));
        QCOMPARE(sums.last().sumFen, qint64 { 20 });

        QVERIFY(TransactionDao().remove(5));
        sums = LedgerFiguresDao().fundDecisionSums();
        QCOMPARE(sums.size(), 1);
    }

    void largeEntriesWithoutVoucherAreFound()
    {
        QVERIFY(addLedger());
        QVERIFY(TestLedger::addVoucher(4));
        QVERIFY(TestLedger::addFundDecision({ 1 }));
        LedgerFiguresDao figures;
        QCOMPARE(figures.largeEntriesWithoutVoucher(300), (QList<qint64> { 2, 1 }));
        QCOMPARE(figures.largeEntriesWithoutVoucher(700), (QList<qint64> { 2, 1 }));
        QCOMPARE(figures.largeEntriesWithoutVoucher(701), (QList<qint64> { 1 }));
        QCOMPARE(figures.largeEntriesWithoutVoucher(0).size(), 5);
    }

    void failuresLeaveNothingAndAReason()
    {
        QCOMPARE(run({ u"ALTER TABLE transactions RENAME TO hidden"_s }), QString());
        expectWarnings(QStringList(6, u"SQL error: no such table: (main\\.)?transactions"_s));
        LedgerFiguresDao figures;
        QVERIFY(figures.accountSums({}, {}).isEmpty() && figures.monthSums({}, {}).isEmpty()
            && figures.fundDecisionSums().isEmpty()
            && figures.largeEntriesWithoutVoucher(0).isEmpty());
        QCOMPARE(figures.ownerBalanceFen({}, {}), qint64 { 0 });
        QCOMPARE(figures.entryCount({}, {}), qint64 { 0 });
        QVERIFY(!figures.lastError().isEmpty());
    }
};

static const RegisteredTest<TestLedgerFiguresDao> registered;

#include "TestLedgerFiguresDao.moc"
