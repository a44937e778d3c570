#include "db/TestProfileDao.h"

#include "core/TextRules.h"
#include "db/ProfileDao.h"
#include "support/TestDatabase.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using TestDatabase::row;
using TestDatabase::run;

namespace {

CompanyProfile distinctProfile()
{
    CompanyProfile profile;
    profile.companyName = u"甲公司"_s;
    profile.creditCode = u"9144"_s;
    profile.shareholderName = u"张三"_s;
    profile.bankName = u"银行"_s;
    profile.bankAccount = u"6222"_s;
    profile.address = u"地址"_s;
    profile.phone = u"电话"_s;
    profile.largeAmountFen = 8'000'000'000;
    profile.frequentWindowDays = 45;
    profile.frequentCount = 6;
    return profile;
}

const QString savedColumns
    = u"SELECT company_name, credit_code, shareholder_name, bank_name, bank_account, address, "
      "phone, large_amount_fen, frequent_window_days, frequent_count FROM company_profile"_s;
const QString otherColumns
    = u"SELECT password_enabled, password_hash, password_salt, disclaimer_version, "
      "disclaimer_confirmed_at, last_backup_at, theme_mode FROM company_profile"_s;

bool setTheOthers()
{
    ProfileDao dao;
    return dao.setPassword(true, u"散列"_s, u"盐"_s) && dao.confirmDisclaimer(u"V1"_s)
        && dao.setLastBackupAt(QDateTime(QDate(2025, 1, 2), QTime(3, 4, 5)))
        && dao.setThemeMode(u"dark"_s);
}

} // namespace

void TestProfileDao::aNewProfileCarriesTheDefaults()
{
    const CompanyProfile stored = ProfileDao().load();
    const CompanyProfile fresh;
    QCOMPARE(stored.largeAmountFen, fresh.largeAmountFen);
    QCOMPARE(stored.frequentWindowDays, fresh.frequentWindowDays);
    QCOMPARE(stored.frequentCount, fresh.frequentCount);
    QCOMPARE(stored.themeMode, fresh.themeMode);
    QVERIFY(!stored.passwordEnabled && stored.companyName.isEmpty());
}

void TestProfileDao::everyFieldIsStored()
{
    const CompanyProfile profile = distinctProfile();
    QVERIFY(ProfileDao().save(profile));
    QVERIFY(setTheOthers());
    QCOMPARE(row(savedColumns), u"甲公司|9144|张三|银行|6222|地址|电话|8000000000|45|6"_s);
    const CompanyProfile stored = ProfileDao().load();
    QCOMPARE(row(otherColumns),
        u"1|散列|盐|V1|%1|2025-01-02 03:04:05|dark"_s.arg(stored.disclaimerConfirmedAt));
    const auto confirmed
        = QDateTime::fromString(stored.disclaimerConfirmedAt, u"yyyy-MM-dd HH:mm:ss"_s);
    QVERIFY(qAbs(confirmed.secsTo(QDateTime::currentDateTime())) < 60);

    QCOMPARE(stored.companyName, profile.companyName);
    QCOMPARE(stored.creditCode, profile.creditCode);
    QCOMPARE(stored.shareholderName, profile.shareholderName);
    QCOMPARE(stored.bankName, profile.bankName);
    QCOMPARE(stored.bankAccount, profile.bankAccount);
    QCOMPARE(stored.address, profile.address);
    QCOMPARE(stored.phone, profile.phone);
    QCOMPARE(stored.largeAmountFen, profile.largeAmountFen);
    QCOMPARE(stored.frequentWindowDays, profile.frequentWindowDays);
    QCOMPARE(stored.frequentCount, profile.frequentCount);
    QVERIFY(stored.passwordEnabled);
    QCOMPARE(stored.passwordHash, u"散列"_s);
    QCOMPARE(stored.passwordSalt, u"盐"_s);
    QCOMPARE(stored.disclaimerVersion, u"V1"_s);
    QCOMPARE(stored.lastBackupAt, u"2025-01-02 03:04:05"_s);
    QCOMPARE(stored.themeMode, u"dark"_s);
    QCOMPARE(stored.createdAt + u'|' + stored.updatedAt,
        row(u"SELECT created_at, updated_at FROM company_profile"_s));
}

void TestProfileDao::savingLeavesTheOtherSettingsAlone()
{
    QVERIFY(setTheOthers());
    const QString before = row(otherColumns);
    QVERIFY(ProfileDao().save(CompanyProfile()));
    QCOMPARE(row(otherColumns), before);
}

void TestProfileDao::theFlagOfThePasswordIsExact()
{
    QVERIFY(ProfileDao().setPassword(true, u"h"_s, u"s"_s));
    QVERIFY(ProfileDao().load().passwordEnabled);
    QVERIFY(ProfileDao().setPassword(false, QString(), QString()));
    QVERIFY(!ProfileDao().load().passwordEnabled);
    QCOMPARE(row(u"SELECT password_enabled, password_hash, password_salt FROM company_profile"_s),
        u"0|∅|∅"_s);
}

void TestProfileDao::aMissingRowIsNotSaved()
{
    QCOMPARE(run({ u"DELETE FROM company_profile"_s }), QString());
    ProfileDao dao;
    const auto expectLine = [] {
        QTest::ignoreMessage(QtWarningMsg, "The profile row is missing: nothing was saved");
    };
    expectLine();
    QVERIFY(!dao.save(distinctProfile()));
    QCOMPARE(dao.lastError(), u"公司档案记录不存在，未能保存"_s);
    expectLine();
    QVERIFY(!dao.confirmDisclaimer(u"V1"_s));
    expectLine();
    QVERIFY(!dao.setPassword(true, u"h"_s, u"s"_s));
    expectLine();
    QVERIFY(!dao.setLastBackupAt(QDateTime::currentDateTime()));
    expectLine();
    QVERIFY(!dao.setThemeMode(u"dark"_s));
    QVERIFY(!dao.find());
}

void TestProfileDao::anUnreadableProfileIsToldFromTheDefaults()
{
    QVERIFY(setTheOthers());
    QVERIFY(ProfileDao().find());
    QCOMPARE(run({ u"ALTER TABLE company_profile RENAME TO hidden"_s }), QString());
    ProfileDao dao;
    const QRegularExpression line(u"^SQL error: no such table: company_profile"_s);
    QTest::ignoreMessage(QtWarningMsg, line);
    QVERIFY(!dao.find());
    QTest::ignoreMessage(QtWarningMsg, line);
    QCOMPARE(dao.load().largeAmountFen, qint64 { 5'000'000 });
    QVERIFY(dao.lastError().startsWith(u"no such table"_s));
}
