#include "db/ProfileDao.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/Warnings.h"

using namespace Qt::StringLiterals;
using TestDatabase::row;
using TestDatabase::run;

class TestProfileDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void thePasswordIsTakenBack()
    {
        QVERIFY(ProfileDao().setPassword(true, u"h"_s, u"s"_s));
        QVERIFY(ProfileDao().setPassword(false, QString(), QString()));
        QVERIFY(!ProfileDao().load().passwordEnabled);
        QCOMPARE(row(u"SELECT password_enabled, password_hash, password_salt FROM "
                     "company_profile"_s),
            u"0|∅|∅"_s);
    }

    void aMissingRowIsNotSaved()
    {
        QCOMPARE(run({ u"DELETE FROM company_profile"_s }), QString());
        ProfileDao dao;
        expectWarnings(QStringList(5, u"The profile row is missing: nothing was saved$"_s));
        QVERIFY(!dao.save({}));
        QCOMPARE(dao.lastError(), u"公司档案记录不存在，未能保存"_s);
        QVERIFY(!dao.confirmDisclaimer(u"V1"_s));
        QVERIFY(!dao.setPassword(true, u"h"_s, u"s"_s));
        QVERIFY(!dao.setLastBackupAt(QDateTime::currentDateTime()));
        QVERIFY(!dao.setThemeMode(u"dark"_s));
        QVERIFY(!dao.find());
    }

    void anUnreadableProfileIsToldFromTheDefaults()
    {
        QCOMPARE(run({ u"UPDATE company_profile SET large_amount_fen = 1"_s,
                     u"ALTER TABLE company_profile RENAME TO hidden"_s }),
            QString());
        ProfileDao dao;
        expectWarnings(QStringList(2, u"SQL error: no such table: company_profile"_s));
        QVERIFY(!dao.find());
        QCOMPARE(dao.load().largeAmountFen, qint64 { 5'000'000 });
        QVERIFY(dao.lastError().startsWith(u"no such table"_s));
    }
};

static const RegisteredTest<TestProfileDao> registered;

#include "TestProfileDao.moc"
