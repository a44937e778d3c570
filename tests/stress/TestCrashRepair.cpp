#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "services/documents/DocumentService.h"
#include "services/entries/EntryService.h"
#include "services/repair/CrashRepair.h"
#include "services/risk/RiskService.h"
#include "services/VoucherSample.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "support/Warnings.h"

#include <QFileInfo>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QStringList parts { QString(), u"-wal"_s };

// What a process leaves that is killed now: the files as they lie, log included.
QMap<QString, QByteArray> filesAsTheyLie()
{
    QMap<QString, QByteArray> files;
    for (const QString& part : parts)
        files.insert(part, TestFile::bytesOf(AppPaths::databasePath() + part));
    return files;
}

bool openedAndRepaired()
{
    const CrashRepair repair;
    const bool opened = DatabaseManager::instance().open();
    repair.run();
    return opened;
}

using Change = std::function<bool()>;

Transaction income()
{
    Transaction entry = TestLedger::entry(u"2025-03-20"_s, Category::BusinessIncome, Direction::In);
    entry.ownerAccountType = AccountType::Private;
    return entry;
}

// As the pages do after such a change.
bool judged(bool done)
{
    RiskService().reevaluateAll();
    return done;
}

} // namespace

class TestCrashRepair final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    // Entries are stored first and evaluated after the commit.
    void levelsCatchUpAfterACrash()
    {
        QVERIFY(VoucherSample::addEntries(2));
        RiskService().reevaluateAll();
        QCOMPARE(VoucherSample::levels(), u"low low"_s);
        // As a threshold that is stored by the process that is killed then.
        QCOMPARE(
            TestDatabase::run({ u"UPDATE company_profile SET large_amount_fen = 900000000"_s }),
            QString());
        const auto files = filesAsTheyLie();
        DatabaseManager::instance().close();
        for (const QString& part : parts)
            QVERIFY(TestFile::put(AppPaths::databasePath() + part, files.value(part)));
        QVERIFY(openedAndRepaired());
        QCOMPARE(VoucherSample::levels(), u"normal normal"_s);
    }

    // A disk may be full enough for the evaluation and not for the change before it.
    void levelsCatchUpAfterAnEvaluationThatFailed_data()
    {
        addColumns<Change, QString>("change", "levels");
        const QList<qint64> all { 1, 2, 3 };
        addCase("a new entry", Change([] { return EntryService::save(income(), {}, {}).ok; }),
            u"medium|R2(3) medium|R2(3) medium|R2(3) high|R1-1"_s);
        addCase("an edit", Change([] {
            Transaction edited = income();
            edited.id = 2;
            return EntryService::save(edited, {}, {}).ok;
        }),
            u"normal| high|R1-1 normal|"_s);
        addCase("a removal", Change([] { return judged(EntryService::remove(1).isEmpty()); }),
            u"normal| normal|"_s);
        addCase("a decision", Change([all] {
            return DocumentService()
                .generateFundDecision(
                    { Direction::Out, u"备用金"_s, all, QDate(2025, 4, 1), {}, {} })
                .ok;
        }),
            u"normal| normal| normal|"_s);
        addCase("other thresholds", Change([] {
            CompanyProfile profile = ProfileDao().load();
            profile.frequentCount = 4;
            return judged(!RiskService::storeProfile(profile));
        }),
            u"normal| normal| normal|"_s);
    }

    void levelsCatchUpAfterAnEvaluationThatFailed()
    {
        QFETCH(Change, change);
        QVERIFY(TestLedger::storeCompany());
        for (int day = 1; day <= 3; ++day)
            TestLedger::add(TestLedger::entry(
                u"2025-03-0%1"_s.arg(day), Category::ShareholderOut, Direction::Out));
        RiskService().reevaluateAll();
        QVERIFY(!RiskService::isBehind());
        QCOMPARE(TestDatabase::run({ u"CREATE TRIGGER full BEFORE UPDATE OF risk_auto_level ON "
                                     "transactions BEGIN SELECT RAISE(ABORT, 'full'); END"_s }),
            QString());
        expectWarnings({ u"SQL error: full"_s, u"RiskService: updateRisk failed"_s });
        QVERIFY(change());
        QVERIFY(RiskService::isBehind());

        QCOMPARE(TestDatabase::run({ u"DROP TRIGGER full"_s }), QString());
        DatabaseManager::instance().close();
        QVERIFY(!QFileInfo::exists(AppPaths::databasePath() + u"-wal"_s));
        QVERIFY(openedAndRepaired());
        QStringList levels;
        for (const QString& id : TestDatabase::rows(u"SELECT id FROM transactions ORDER BY id"_s))
            levels += TestLedger::autoRisk(id.toLongLong());
        QTEST(levels.join(u' '), "levels");
        QVERIFY(!RiskService::isBehind());
    }

    void voucherFilesThatLostTheirRowAreToldAndKept()
    {
        QVERIFY(VoucherSample::archived(u"a.pdf"_s) > 0);
        const QString stray = AppPaths::voucherAssetsDir() + u"/stray.pdf"_s;
        QVERIFY(TestFile::put(stray, "copied, never stored"));
        const auto files = filesAsTheyLie();
        DatabaseManager::instance().close();
        for (const QString& part : parts)
            QVERIFY(TestFile::put(AppPaths::databasePath() + part, files.value(part)));
        QTest::ignoreMessage(
            QtInfoMsg, "No voucher names the file voucher_assets/stray.pdf; it is left alone");
        QVERIFY(openedAndRepaired());
        QCOMPARE(VoucherSample::inventory(), u"1 vouchers, 0 links, 2 files"_s);
    }
};

static const RegisteredTest<TestCrashRepair> registered;

#include "TestCrashRepair.moc"
