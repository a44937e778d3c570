#include "db/DatabaseManager.h"
#include "db/DbTransaction.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/Warnings.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

bool addProject(const QString& code)
{
    return TestDatabase::run(
        { u"INSERT INTO projects (name, code, client_name) VALUES ('n', '%1', 'c')"_s.arg(code) })
        .isEmpty();
}

bool refuseB(const QString& how)
{
    return TestDatabase::run({ u"CREATE TEMP TRIGGER no BEFORE INSERT ON projects WHEN NEW.code = "
                               "'B' BEGIN SELECT RAISE(%1, 'no B'); END"_s.arg(how) })
        .isEmpty();
}

QString storedCodes()
{
    return TestDatabase::rows(u"SELECT code FROM projects ORDER BY code"_s).join(u' ');
}

bool nothingIsOpen()
{
    const DbTransaction next;
    return next.isOpen()
        && TestDatabase::run({ u"SAVEPOINT probe"_s, u"RELEASE probe"_s }).isEmpty();
}

} // namespace

class TestDbTransaction final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void whatIsCommittedStays()
    {
        {
            DbTransaction transaction;
            QVERIFY(transaction.isOpen());
            QVERIFY(addProject(u"A"_s));
            QVERIFY(transaction.commit());
            QVERIFY(!transaction.isOpen());
            QVERIFY2(!transaction.commit(), "a transaction is committed once");
        }
        QCOMPARE(storedCodes(), u"A"_s);
    }

    void innerGuardsAreSavepoints_data()
    {
        addColumns<bool, bool, bool, QString>("outer", "inner", "innermost", "stored");
        addCase("all committed", true, true, true, u"A B C D"_s);
        addCase("innermost rolled back", true, true, false, u"A B D"_s);
        addCase("inner rolled back", true, false, true, u"A D"_s);
        addCase("outer rolled back", false, true, true, QString());
    }

    void innerGuardsAreSavepoints()
    {
        QFETCH(bool, outer);
        QFETCH(bool, inner);
        QFETCH(bool, innermost);
        {
            DbTransaction first;
            QVERIFY(addProject(u"A"_s));
            {
                DbTransaction second;
                QVERIFY(second.isOpen() && addProject(u"B"_s));
                {
                    DbTransaction third;
                    QVERIFY(third.isOpen() && addProject(u"C"_s));
                    QVERIFY(!innermost || third.commit());
                }
                QVERIFY(!inner || second.commit());
            }
            QVERIFY(addProject(u"D"_s));
            QVERIFY(!outer || first.commit());
        }
        QTEST(storedCodes(), "stored");
        QVERIFY(nothingIsOpen());
    }

    void aFailedCommitIsRolledBack()
    {
        QCOMPARE(
            TestDatabase::run({ u"CREATE TABLE late (id INTEGER REFERENCES projects(id) DEFERRABLE "
                                "INITIALLY DEFERRED)"_s }),
            QString());
        DbTransaction transaction;
        QVERIFY(addProject(u"A"_s));
        QCOMPARE(TestDatabase::run({ u"INSERT INTO late VALUES (99)"_s }), QString());
        expectWarnings({ u"Transaction commit failed: FOREIGN KEY constraint failed"_s });
        QVERIFY(!transaction.commit());
        QVERIFY(!transaction.isOpen());
        QVERIFY(transaction.lastError().contains(u"FOREIGN KEY constraint failed"_s));
        QCOMPARE(storedCodes(), QString());

        DbTransaction next;
        QVERIFY(next.isOpen() && addProject(u"B"_s) && next.commit());
        QCOMPARE(storedCodes(), u"B"_s);
    }

    void aRefusedStatementLeavesTheRestToTheGuard()
    {
        QVERIFY(refuseB(u"ABORT"_s));
        {
            const DbTransaction transaction;
            QVERIFY(addProject(u"A"_s));
            QVERIFY(!addProject(u"B"_s));
            QVERIFY(transaction.isOpen());
        }
        QCOMPARE(storedCodes(), QString());
    }

    void anInnerGuardDoesNotOutliveItsTransaction()
    {
        // A full disk rolls everything back by itself, as this trigger does.
        QVERIFY(refuseB(u"ROLLBACK"_s));
        DbTransaction outer;
        QVERIFY(addProject(u"A"_s));
        QVERIFY(!addProject(u"B"_s));
        {
            const DbTransaction inner;
            QVERIFY2(!inner.isOpen(), "it would commit on its own");
            QVERIFY(!inner.lastError().isEmpty());
        }
        expectWarnings({ u"Transaction commit failed: .*no transaction"_s,
            u"Transaction rollback failed: .*no transaction"_s });
        QVERIFY(!outer.commit());
        QCOMPARE(storedCodes(), QString());
        QVERIFY(nothingIsOpen());
    }

    void anOuterGuardEndsThoseInside()
    {
        auto outer = std::make_unique<DbTransaction>();
        QVERIFY(addProject(u"A"_s));
        DbTransaction inner;
        QVERIFY(addProject(u"B"_s));
        QTest::ignoreMessage(QtWarningMsg, "Transaction commit failed: 内层事务尚未结束");
        QVERIFY2(!outer->commit(), "what the inner one will decide is not known yet");
        QVERIFY(!inner.isOpen());
        QVERIFY(!inner.commit());
        outer.reset();
        QCOMPARE(storedCodes(), QString());
        QVERIFY(nothingIsOpen());
    }

    void withoutADatabaseNothingBegins()
    {
        DatabaseManager::instance().close();
        DbTransaction transaction;
        QVERIFY(!transaction.isOpen());
        QVERIFY(!transaction.commit());
        QCOMPARE(transaction.lastError(), u"数据库未打开"_s);
    }

    void closingEndsOpenGuards()
    {
        DbTransaction transaction;
        QVERIFY(addProject(u"A"_s));
        DatabaseManager::instance().close();
        QVERIFY(!transaction.isOpen());
        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(storedCodes(), QString());
        QVERIFY(nothingIsOpen());
    }
};

static const RegisteredTest<TestDbTransaction> registered;

#include "TestDbTransaction.moc"
