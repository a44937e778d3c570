#include "db/TransactionDao.h"
#include "services/entries/EntryService.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"

using namespace Qt::StringLiterals;

namespace {

Transaction largeEntry()
{
    return TestLedger::entry(u"2025-03-01"_s, Category::Other, Direction::Out, 6'000'000);
}

QString linkedVouchers(qint64 entryId)
{
    return TestDatabase::rows(
        u"SELECT source_id FROM entity_links WHERE source_type = 'voucher' "
        "AND target_type = 'transaction' AND target_id = %1 ORDER BY 1"_s.arg(entryId))
        .join(u' ');
}

} // namespace

class TestEntryService final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aNewEntryIsStoredTrimmedAndEvaluated()
    {
        Transaction entry = largeEntry();
        entry.summary = u" 设备款　"_s;
        const EntryService::SaveResult result = EntryService::save(entry, {}, {});
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        QCOMPARE(TransactionDao().findById(result.entryId)->summary, u"设备款"_s);
        QCOMPARE(TestLedger::autoRisk(result.entryId), u"low|R3"_s);
    }

    void anEditChangesEntryAndLinksTogether()
    {
        Transaction entry = largeEntry();
        entry.id = TestLedger::add(entry);
        const qint64 before = TestLedger::addVoucher(entry.id);
        const qint64 added = TestLedger::addVoucher(0);
        entry.summary = u"改过的摘要"_s;
        QVERIFY(EntryService::save(entry, { added }, { before }).ok);
        QCOMPARE(TransactionDao().findById(entry.id)->summary, u"改过的摘要"_s);
        QCOMPARE(linkedVouchers(entry.id), QString::number(added));
        QCOMPARE(TestLedger::autoRisk(entry.id), u"normal|"_s);
        QVERIFY(EntryService::save(entry, {}, { added }).ok);
        QCOMPARE(TestLedger::autoRisk(entry.id), u"low|R3"_s);
    }

    void aFailureLeavesEverythingAsItWas_data()
    {
        addColumns<bool, bool, QString, QString>("isNew", "atCommit", "event", "message");
        const QString write = u"流水写入失败，请重试。"_s;
        const QString link = u"凭证关联写入失败，请重试。"_s;
        addCase("insert", true, false, u"INSERT ON transactions"_s, write);
        addCase("update", false, false, u"UPDATE ON transactions"_s, write);
        addCase("link", false, false, u"INSERT ON entity_links"_s, link);
        addCase("link of a new entry", true, false, u"INSERT ON entity_links"_s, link);
        addCase("unlink", false, false, u"DELETE ON entity_links"_s, link);
        addCase("commit", true, true, u"INSERT ON transactions"_s, u"事务提交失败，请重试。"_s);
        addCase("commit of links", false, true, u"UPDATE ON transactions"_s,
            u"凭证关联提交失败，请重试。"_s);
    }

    void aFailureLeavesEverythingAsItWas()
    {
        QFETCH(bool, isNew);
        QFETCH(bool, atCommit);
        QFETCH(QString, event);
        QFETCH(QString, message);
        Transaction entry = largeEntry();
        entry.id = TestLedger::add(entry);
        const qint64 removed = TestLedger::addVoucher(entry.id);
        const qint64 added = TestLedger::addVoucher(0);
        if (atCommit)
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression(u"^Transaction commit failed: "_s));
        QVERIFY(atCommit ? TestDatabase::refuseCommitAfter(event) : TestDatabase::refuse(event));
        const QStringList before = TestDatabase::dump();
        if (isNew)
            entry.id = 0;
        entry.summary = u"改过的摘要"_s;
        // A new entry without vouchers fails at its own commit, one with vouchers at theirs.
        const bool withLinks = !isNew || !atCommit;
        const EntryService::SaveResult result
            = EntryService::save(entry, withLinks ? QList<qint64> { added } : QList<qint64>(),
                isNew ? QList<qint64>() : QList<qint64> { removed });
        QVERIFY(!result.ok);
        QCOMPARE(result.entryId, 0);
        QVERIFY2(result.message.startsWith(message), qUtf8Printable(result.message));
        QCOMPARE(TestDatabase::dump(), before);
    }

    void anEntryThatIsGoneIsNotSaved()
    {
        Transaction entry = largeEntry();
        entry.id = 77;
        QCOMPARE(EntryService::save(entry, { TestLedger::addVoucher(0) }, {}).message,
            u"该流水可能已被删除。"_s);
        QCOMPARE(linkedVouchers(77), QString());
    }

    void aReviewStandsAboveTheRulesUntilItIsTakenBack()
    {
        const qint64 id = EntryService::save(largeEntry(), {}, {}).entryId;
        QVERIFY(EntryService::review(id, RiskLevel::Normal, u" 已核对合同 "_s).ok);
        QVERIFY(TestDatabase::row(u"SELECT risk_level, risk_auto_level, risk_manual_note FROM "
                                  "transactions"_s)
            == u"normal|low|已核对合同"_s);
        QVERIFY(EntryService::review(id, {}, u"合同无效"_s).ok);
        QCOMPARE(TestDatabase::row(u"SELECT risk_level, risk_manual_override FROM transactions"_s),
            u"low|∅"_s);
    }

    void aReviewThatCannotBeStoredIsTold()
    {
        const qint64 id = TestLedger::add(largeEntry());
        QCOMPARE(
            EntryService::review(id, RiskLevel::Low, u"已"_s).message, u"复核说明需 2–500 个字"_s);
        QCOMPARE(EntryService::review(77, RiskLevel::Low, u"已核对"_s).message,
            u"该流水可能已被删除。"_s);
        QVERIFY(TestDatabase::refuseUpdates(u"transactions"_s));
        QVERIFY(EntryService::review(id, RiskLevel::Low, u"已核对"_s)
                    .message.startsWith(u"复核结果写入失败，请重试。"_s));
    }

    void counterpartiesComeLatestFirstWithTheirLatestAccount()
    {
        const auto add = [](const QString& name, AccountType account) {
            Transaction entry = largeEntry();
            entry.counterpartyName = name;
            entry.counterpartyAccountType = account;
            return TestLedger::add(entry) > 0;
        };
        QVERIFY(add(u"林岚"_s, AccountType::Company) && add(u"甲公司"_s, AccountType::Company)
            && add(u"林岚"_s, AccountType::Private));
        QStringList seen;
        for (const Counterparty& known : TransactionDao().knownCounterparties())
            seen += known.name + codeOf(known.accountType);
        QCOMPARE(seen, (QStringList { u"林岚private"_s, u"甲公司company"_s }));
    }
};

static const RegisteredTest<TestEntryService> registered;

#include "TestEntryService.moc"
