#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/TransactionDao.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/Warnings.h"

using namespace Qt::StringLiterals;

namespace {

QString voucherCountPlan()
{
    const QString sql = u"EXPLAIN QUERY PLAN "_s + TransactionDao::searchStatement({});
    return TestDatabase::rows(sql).filter(u" l "_s).join(u'\n');
}

const QString fixedStatistics = u"SELECT idx FROM sqlite_stat1 WHERE tbl = 'entity_links'"_s;

bool reopenAfter(const QString& script)
{
    DatabaseManager::instance().close();
    return TestDatabase::runOnFile(AppPaths::databasePath(), script).isEmpty()
        && DatabaseManager::instance().open();
}

} // namespace

class TestPlannerStatistics final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void theLedgerLooksLinksUpByBothColumns_data()
    {
        QTest::addColumn<QString>("script");
        addCase("new and empty", QString());
        addCase("a file without statistics", u"DROP TABLE sqlite_stat1"_s);
        addCase("a file with an empty table of them", u"DELETE FROM sqlite_stat1"_s);
        addCase("a file analysed while it was small",
            u"INSERT INTO entity_links (source_type, source_id, target_type, target_id) VALUES "
            "('voucher', 1, 'transaction', 1); ANALYZE"_s);
    }

    void theLedgerLooksLinksUpByBothColumns()
    {
        QFETCH(QString, script);
        if (!script.isEmpty())
            QVERIFY(reopenAfter(script));
        const QString plan = voucherCountPlan();
        QVERIFY2(plan.contains(u"idx_link_target (target_type=? AND target_id=?)"_s),
            qUtf8Printable(plan));
        // In force for a later start too.
        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(voucherCountPlan(), plan);
    }

    void onlyLinksHaveStatistics()
    {
        QCOMPARE(TestDatabase::rows(u"SELECT DISTINCT tbl FROM sqlite_stat1"_s),
            QStringList { u"entity_links"_s });
        QCOMPARE(TestDatabase::rows(fixedStatistics).size(), 3);
    }

    void nothingIsWrittenWhenTheyAreThere()
    {
        DatabaseManager::instance().close();
        const QByteArray bytes = TestFile::bytesOf(AppPaths::databasePath());
        QVERIFY(DatabaseManager::instance().open());
        QVERIFY2(TestFile::bytesOf(AppPaths::databasePath() + u"-wal"_s).isEmpty(),
            "not even into the write-ahead log");
        DatabaseManager::instance().close();
        QCOMPARE(TestFile::bytesOf(AppPaths::databasePath()), bytes);
    }

    void otherStatisticsStay()
    {
        QVERIFY(
            reopenAfter(u"DELETE FROM sqlite_stat1; INSERT INTO sqlite_stat1 VALUES ('projects', "
                        "'sqlite_autoindex_projects_1', '7 1')"_s));
        QCOMPARE(
            TestDatabase::row(u"SELECT stat FROM sqlite_stat1 WHERE tbl = 'projects'"_s), u"7 1"_s);
        QCOMPARE(TestDatabase::rows(fixedStatistics).size(), 3);
    }

    void aFailureIsNotFatal()
    {
        // The table is there under its name but cannot take rows of this shape.
        const QString script
            = u"PRAGMA writable_schema = ON; DELETE FROM sqlite_stat1; "
              "UPDATE sqlite_master SET sql = 'CREATE TABLE sqlite_stat1(tbl, idx, "
              "stat, more NOT NULL)' WHERE name = 'sqlite_stat1'"_s;
        expectWarnings({ u"Planner statistics could not be written: NOT NULL constraint"_s });
        QVERIFY(reopenAfter(script));
        QVERIFY(TestDatabase::rows(u"SELECT * FROM sqlite_stat1"_s).isEmpty());
    }
};

static const RegisteredTest<TestPlannerStatistics> registered;

#include "TestPlannerStatistics.moc"
