#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "support/TestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/Warnings.h"

#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString toVersion2
    = u"ALTER TABLE company_profile DROP COLUMN theme_mode; PRAGMA user_version = 2;"_s;
const QString toVersion1 = toVersion2
    + u"DROP TABLE documents; DROP TABLE vouchers; DROP TABLE entity_links;"
      "DROP TRIGGER trg_projects_delete_links; DROP TRIGGER "
      "trg_contracts_delete_links; DROP TRIGGER trg_transactions_delete_links;"
      "DROP INDEX idx_tx_query; PRAGMA user_version = 1;"_s;

// A ledger with a few rows, taken back to an older shape by a script.
bool makeOlderFile(const QString& script)
{
    DatabaseManager& manager = DatabaseManager::instance();
    const bool made = manager.open()
        && TestDatabase::run(
            {
                u"UPDATE company_profile SET company_name = '甲公司', password_enabled = 1, "
                "theme_mode = 'dark'"_s,
                u"UPDATE company_profile SET updated_at = '2020-02-02 00:00:00'"_s,
                u"INSERT INTO projects (id, name, code, client_name) VALUES (4, '网站', 'P-1', "
                "'乙')"_s,
                u"INSERT INTO transactions (id, trans_date, summary, direction, amount_fen, "
                "owner_account_type, counterparty_name, category, project_id, updated_at) VALUES "
                "(9, "
                "'2024-01-31', '设计费', 'in', 123456, 'company', '乙', 'business_income', 4, "
                "'2020-01-01 00:00:00')"_s,
            })
               .isEmpty();
    manager.close();
    return made && TestDatabase::runOnFile(AppPaths::databasePath(), script).isEmpty();
}

QStringList copies()
{
    return QDir(AppPaths::backupsDir()).entryList(QDir::Files, QDir::Name);
}

QString copyPath()
{
    return AppPaths::backupsDir() + u'/' + copies().value(0);
}

} // namespace

class TestMigration final : public TestCase {
    Q_OBJECT

private slots:
    void cleanup() { DatabaseManager::instance().close(); }

    void olderFilesAreBroughtUpToDate_data()
    {
        addColumns<QString, QString, QString>("script", "version", "theme");
        addCase("version 1", toVersion1, u"1"_s, u"light"_s);
        addCase("version 2", toVersion2, u"2"_s, u"light"_s);
        addCase("version 2 that has the theme already", u"PRAGMA user_version = 2"_s, u"2"_s,
            u"dark"_s);
    }

    void olderFilesAreBroughtUpToDate()
    {
        QFETCH(QString, script);
        QFETCH(QString, version);
        QVERIFY(makeOlderFile(script));
        const QString entry = u"SELECT * FROM transactions"_s;
        const QString before = TestDatabase::rowOfFile(AppPaths::databasePath(), entry);

        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(DatabaseManager::instance().userVersion(), qint64 { 3 });
        QCOMPARE(TestDatabase::rows(entry), QStringList { before });
        const CompanyProfile profile = ProfileDao().load();
        QCOMPARE(profile.companyName, u"甲公司"_s);
        QVERIFY(profile.passwordEnabled);
        QTEST(profile.themeMode, "theme");
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM company_profile"_s), u"1"_s);

        const QRegularExpression name(
            u"^brixa_before_v3_from_v%1_\\d{8}_\\d{6}\\.db$"_s.arg(version));
        QCOMPARE(copies().filter(name).size(), 1);
        QCOMPARE(TestDatabase::rowOfFile(copyPath(), u"PRAGMA user_version"_s), version);
        QCOMPARE(TestDatabase::rowOfFile(copyPath(), u"PRAGMA integrity_check"_s), u"ok"_s);
        QCOMPARE(TestDatabase::rowOfFile(copyPath(), entry), before);
    }

    void aMigratedFileHasTheSchemaOfANewOne()
    {
        const QString layout
            = u"SELECT m.name, c.name, c.type, c.\"notnull\", c.dflt_value FROM "
              "sqlite_master m LEFT JOIN pragma_table_xinfo(m.name) c WHERE m.name NOT "
              "LIKE 'sqlite_%' ORDER BY m.name, c.name"_s;
        QVERIFY(DatabaseManager::instance().open());
        const QStringList fresh = TestDatabase::rows(layout);
        QVERIFY(fresh.size() > 80);
        QVERIFY(makeOlderFile(toVersion1));
        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(TestDatabase::rows(layout), fresh);
    }

    void aMigrationThatFailsLeavesTheFile_data()
    {
        addColumns<QString, QString, QStringList>("script", "version", "criticals");
        addCase("a table of version 1 lacks a column",
            QString(u"DROP TRIGGER trg_transactions_updated;"
                    "ALTER TABLE transactions DROP COLUMN risk_manual_note;"_s
                + toVersion1),
            u"1"_s,
            QStringList { u"Schema statement failed: no such column: risk_manual_note .* \\| SQL: "
                          "SELECT id, trans_date"_s,
                u"Migration to v2 failed: no such column"_s });
        addCase("the last statement's table is a view",
            QString(toVersion2
                + u"ALTER TABLE company_profile RENAME TO profiles;"
                  "CREATE VIEW company_profile AS SELECT * FROM profiles;"_s),
            u"2"_s, QStringList { u"Migration v3 ALTER failed: "_s });
    }

    void aMigrationThatFailsLeavesTheFile()
    {
        QFETCH(QString, script);
        QFETCH(QStringList, criticals);
        QVERIFY(makeOlderFile(script));
        const QByteArray before = TestFile::bytesOf(AppPaths::databasePath());

        expectWarnings(criticals, QtCriticalMsg);
        QVERIFY(!DatabaseManager::instance().open());
        QVERIFY(!DatabaseManager::instance().lastError().isEmpty());
        DatabaseManager::instance().close();
        QCOMPARE(TestFile::bytesOf(AppPaths::databasePath()), before);
        QTEST(
            TestDatabase::rowOfFile(AppPaths::databasePath(), u"PRAGMA user_version"_s), "version");
        QCOMPARE(copies().size(), 1);
        QCOMPARE(TestDatabase::rowOfFile(copyPath(), u"SELECT amount_fen FROM transactions"_s),
            u"123456"_s);
    }

    void withoutACopyNoMigrationBegins()
    {
        QVERIFY(makeOlderFile(toVersion1));
        const QByteArray before = TestFile::bytesOf(AppPaths::databasePath());
        QVERIFY(QDir(AppPaths::backupsDir()).removeRecursively());
        QVERIFY(TestFile::put(AppPaths::backupsDir(), "in the way"));

        expectWarnings({ u"Copy before the migration failed: "_s }, QtCriticalMsg);
        QVERIFY(!DatabaseManager::instance().open());
        const QString reason = DatabaseManager::instance().lastError();
        QVERIFY(reason.startsWith(u"升级前无法备份数据库，数据库未作任何更改："_s));
        DatabaseManager::instance().close();
        QCOMPARE(TestFile::bytesOf(AppPaths::databasePath()), before);
    }

    void everyMigrationKeepsACopyOfItsOwn()
    {
        // Several within one second, so that names would collide.
        for (int i = 1; i <= 3; ++i) {
            QVERIFY(DatabaseManager::instance().open());
            DatabaseManager::instance().close();
            QCOMPARE(TestDatabase::runOnFile(AppPaths::databasePath(), toVersion2), QString());
            QVERIFY(DatabaseManager::instance().open());
            QCOMPARE(copies().size(), i);
            DatabaseManager::instance().close();
        }
    }

    void aNewerFileOpensWithOneWarning()
    {
        QVERIFY(makeOlderFile(u"PRAGMA user_version = 4"_s));
        QTest::ignoreMessage(
            QtWarningMsg, "The database has version 4, newer than this program's 3");
        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(DatabaseManager::instance().userVersion(), qint64 { 4 });
        QCOMPARE(ProfileDao().load().companyName, u"甲公司"_s);
        QVERIFY(copies().isEmpty());
    }
};

static const RegisteredTest<TestMigration> registered;

#include "TestMigration.moc"
