#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/DbTransaction.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>

using namespace Qt::StringLiterals;
using TestDatabase::row;
using TestDatabase::rows;
using TestDatabase::run;

namespace {

QStringList namesOf(const QString& type)
{
    return rows(u"SELECT name FROM sqlite_master WHERE type = '%1' AND name NOT LIKE 'sqlite_%' "
                "ORDER BY name"_s.arg(type));
}

const QString insertProject
    = u"INSERT INTO projects (id, name, code, client_name) VALUES (%1, 'n', 'P%1', 'c')"_s;
const QString insertEntry
    = u"INSERT INTO transactions (id, trans_date, summary, direction, amount_fen, "
      "owner_account_type, counterparty_name, category, project_id) VALUES (%1, '2025-01-01', 's', "
      "'in', 1, 'company', 'c', 'other', %2)"_s;
const QString insertContract
    = u"INSERT INTO contracts (id, project_id, name, code, party_b, sign_date) VALUES (%1, %2, "
      "'n', 'C%1', 'b', '2025-01-01')"_s;
const QString insertVoucher
    = u"INSERT INTO vouchers (id, name, voucher_type, voucher_date, original_file_name, "
      "stored_path, file_ext, file_size, sha256) VALUES (%1, 'n', 'chat', '2025-01-01', 'f', 'p', "
      "'e', 0, 'x')"_s;
const QString insertDocument
    = u"INSERT INTO documents (id, doc_type, doc_no, title, doc_date, content_html, file_path) "
      "VALUES (%1, 'fund_decision', 'D%1', 't', '2025-01-01', 'h', 'p')"_s;
const QString insertLink
    = u"INSERT INTO entity_links (source_type, source_id, target_type, target_id) VALUES ('%1', "
      "%2, '%3', %4)"_s;

} // namespace

class TestSchema final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aNewFileHasTheWholeSchema()
    {
        const QStringList tables { u"company_profile"_s, u"contracts"_s, u"documents"_s,
            u"entity_links"_s, u"projects"_s, u"transactions"_s, u"vouchers"_s };
        QCOMPARE(DatabaseManager::instance().tableNames(), tables);
        const QStringList indexes { u"idx_contracts_project"_s, u"idx_doc_type"_s,
            u"idx_doc_year"_s, u"idx_link_source"_s, u"idx_link_target"_s, u"idx_tx_category"_s,
            u"idx_tx_date"_s, u"idx_tx_owner"_s, u"idx_tx_project"_s, u"idx_tx_query"_s,
            u"idx_tx_risk"_s, u"idx_voucher_date"_s, u"idx_voucher_sha"_s, u"idx_voucher_type"_s };
        QCOMPARE(namesOf(u"index"_s), indexes);
        const QStringList triggers { u"trg_company_profile_updated"_s,
            u"trg_contracts_delete_links"_s, u"trg_contracts_updated"_s,
            u"trg_documents_delete_links"_s, u"trg_projects_delete_links"_s,
            u"trg_projects_updated"_s, u"trg_transactions_delete_links"_s,
            u"trg_transactions_updated"_s, u"trg_vouchers_delete_links"_s };
        QCOMPARE(namesOf(u"trigger"_s), triggers);
        QCOMPARE(DatabaseManager::instance().userVersion(), qint64 { 3 });
    }

    void theConnectionIsSetUp()
    {
        QCOMPARE(row(u"PRAGMA journal_mode"_s), u"wal"_s);
        QCOMPARE(row(u"PRAGMA foreign_keys"_s), u"1"_s);
        QCOMPARE(row(u"PRAGMA encoding"_s), u"UTF-8"_s);
        QCOMPARE(row(u"PRAGMA busy_timeout"_s), u"5000"_s);
        QCOMPARE(row(u"PRAGMA synchronous"_s), u"2"_s);
        QCOMPARE(row(u"PRAGMA recursive_triggers"_s), u"0"_s);
    }

    void aSecondStartChangesNothing()
    {
        QCOMPARE(run({ insertProject.arg(7), insertEntry.arg(QString::number(3), u"7"_s),
                     u"UPDATE company_profile SET company_name = '甲公司', theme_mode = 'dark', "
                     "created_at = '2020-01-01 00:00:00'"_s }),
            QString());
        const QStringList before = TestDatabase::dump();
        DatabaseManager::instance().close();
        const QByteArray bytes = TestFile::bytesOf(AppPaths::databasePath());

        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(TestDatabase::dump(), before);
        DatabaseManager::instance().close();
        QCOMPARE(TestFile::bytesOf(AppPaths::databasePath()), bytes);
    }

    void badRowsAreRefused_data()
    {
        QTest::addColumn<QString>("statement");
        const auto entry = [](const char* name, const QString& values) {
            addCase(name,
                u"INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
                "owner_account_type, counterparty_name, category) VALUES (%1)"_s.arg(values));
        };
        entry("amount of zero", u"'2025-01-01', 's', 'in', 0, 'company', 'c', 'other'"_s);
        entry("unknown direction", u"'2025-01-01', 's', 'up', 1, 'company', 'c', 'other'"_s);
        entry("unknown category", u"'2025-01-01', 's', 'in', 1, 'company', 'c', 'gift'"_s);
        entry("an owner's account that is not known",
            u"'2025-01-01', 's', 'in', 1, 'unknown', 'c', "
            "'other'"_s);
        entry("no date", u"NULL, 's', 'in', 1, 'company', 'c', 'other'"_s);
        addCase("second profile", u"INSERT INTO company_profile (id) VALUES (2)"_s);
        addCase("negative threshold", u"UPDATE company_profile SET large_amount_fen = -1"_s);
        addCase("window of no days", u"UPDATE company_profile SET frequent_window_days = 0"_s);
        addCase("count of zero", u"UPDATE company_profile SET frequent_count = 0"_s);
        addCase("password flag of two", u"UPDATE company_profile SET password_enabled = 2"_s);
        addCase("negative budget",
            u"INSERT INTO projects (name, code, client_name, budget_fen) VALUES ('n','x','c',-1)"_s);
        addCase("project code that is taken", insertProject.arg(1) + u", (8, 'n', 'P1', 'c')"_s);
        addCase("document number that is taken",
            insertDocument.arg(1) + u", (8, 'fund_decision', 'D1', 't', '2025-01-01', 'h', 'p')"_s);
        addCase("contract of a missing project", insertContract.arg(u"1"_s, u"99"_s));
        addCase("entry of a missing project", insertEntry.arg(u"1"_s, u"99"_s));
        addCase("link from nothing", insertLink.arg(u"voucher"_s, u"0"_s, u"project"_s, u"1"_s));
        addCase(
            "link of an unknown kind", insertLink.arg(u"letter"_s, u"1"_s, u"project"_s, u"1"_s));
    }

    void badRowsAreRefused()
    {
        QFETCH(QString, statement);
        QVERIFY(run({ statement }).contains(u"constraint failed"_s));
    }

    void changesRenewTheTimeOfChange()
    {
        QCOMPARE(run({ insertProject.arg(1), insertContract.arg(u"1"_s, u"1"_s),
                     insertEntry.arg(u"1"_s, u"1"_s) }),
            QString());
        for (const QString& table :
            { u"company_profile"_s, u"projects"_s, u"contracts"_s, u"transactions"_s }) {
            QCOMPARE(run({ u"UPDATE %1 SET updated_at = '2001-01-01 00:00:00'"_s.arg(table) }),
                QString());
            QCOMPARE(row(u"SELECT updated_at >= datetime('now','localtime','-1 minute') FROM "_s
                         + table),
                u"1"_s);
        }
    }

    void deletingAProjectTakesWhatHangsOnIt()
    {
        QCOMPARE(
            run({ insertProject.arg(1), insertProject.arg(2), insertContract.arg(u"5"_s, u"1"_s),
                insertContract.arg(u"6"_s, u"2"_s), insertEntry.arg(u"9"_s, u"1"_s),
                insertLink.arg(u"voucher"_s, u"1"_s, u"project"_s, u"1"_s),
                insertLink.arg(u"voucher"_s, u"1"_s, u"contract"_s, u"5"_s),
                insertLink.arg(u"document"_s, u"1"_s, u"project"_s, u"1"_s),
                insertLink.arg(u"voucher"_s, u"1"_s, u"contract"_s, u"6"_s),
                insertLink.arg(u"voucher"_s, u"1"_s, u"transaction"_s, u"1"_s),
                u"DELETE FROM projects WHERE id = 1"_s }),
            QString());
        QCOMPARE(rows(u"SELECT id FROM contracts"_s), QStringList { u"6"_s });
        QCOMPARE(rows(u"SELECT id, project_id FROM transactions"_s), QStringList { u"9|∅"_s });
        QCOMPARE(rows(u"SELECT target_type, target_id FROM entity_links ORDER BY id"_s),
            (QStringList { u"contract|6"_s, u"transaction|1"_s }));
    }

    void deletingASourceTakesItsLinks()
    {
        QCOMPARE(run({ insertVoucher.arg(1), insertVoucher.arg(2), insertDocument.arg(1),
                     insertEntry.arg(u"1"_s, u"NULL"_s),
                     insertLink.arg(u"voucher"_s, u"1"_s, u"transaction"_s, u"1"_s),
                     insertLink.arg(u"document"_s, u"1"_s, u"transaction"_s, u"1"_s),
                     insertLink.arg(u"voucher"_s, u"2"_s, u"project"_s, u"1"_s) }),
            QString());
        const auto leftAfter = [](const QString& deletion) {
            const QString problem = run({ u"BEGIN"_s, deletion });
            const QStringList left
                = rows(u"SELECT source_type, source_id FROM entity_links ORDER BY id"_s);
            return problem + left.join(u' ') + run({ u"ROLLBACK"_s });
        };
        QCOMPARE(leftAfter(u"DELETE FROM vouchers WHERE id = 1"_s), u"document|1 voucher|2"_s);
        QCOMPARE(leftAfter(u"DELETE FROM documents WHERE id = 1"_s), u"voucher|1 voucher|2"_s);
        QCOMPARE(leftAfter(u"DELETE FROM transactions WHERE id = 1"_s), u"voucher|2"_s);
    }

    void aCheckpointEmptiesTheLog()
    {
        QCOMPARE(run({ insertProject.arg(1) }), QString());
        const QString log = AppPaths::databasePath() + u"-wal"_s;
        QVERIFY(QFileInfo(log).size() > 0);
        QVERIFY(DatabaseManager::instance().checkpoint());
        QCOMPARE(QFileInfo(log).size(), qint64 { 0 });
        QVERIFY(TestFile::bytesOf(AppPaths::databasePath()).contains("projects"));
    }

    void aCheckpointThatIsHeldBackWarns()
    {
        const QString name = u"reader"_s;
        {
            QSqlDatabase reader = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
            reader.setDatabaseName(AppPaths::databasePath());
            QVERIFY(reader.open());
            QSqlQuery reading(reader);
            QVERIFY(reading.exec(u"SELECT * FROM sqlite_master"_s) && reading.next());
            QCOMPARE(run({ u"PRAGMA busy_timeout = 0"_s, insertProject.arg(1) }), QString());
            QTest::ignoreMessage(
                QtWarningMsg, "WAL checkpoint is incomplete: the database is busy");
            QVERIFY(DatabaseManager::instance().checkpoint());
        }
        QSqlDatabase::removeDatabase(name);
        QVERIFY2(DatabaseManager::instance().checkpoint(), "complete once the reader has gone");
    }

    void aCheckpointInsideATransactionFails()
    {
        const DbTransaction transaction;
        QCOMPARE(run({ insertProject.arg(1) }), QString());
        QVERIFY(!DatabaseManager::instance().checkpoint());
        QVERIFY(DatabaseManager::instance().lastError().contains(u"locked"_s));
    }

    void theIntegrityCheckReportsItsFirstFinding()
    {
        QString detail;
        QVERIFY(DatabaseManager::instance().integrityCheck(&detail));
        QCOMPARE(detail, u"ok"_s);
        QVERIFY(DatabaseManager::instance().integrityCheck());

        QCOMPARE(run({ insertProject.arg(1), u"PRAGMA ignore_check_constraints = ON"_s,
                     u"UPDATE projects SET budget_fen = -5"_s,
                     u"PRAGMA ignore_check_constraints = OFF"_s }),
            QString());
        DatabaseManager::instance().close();
        const QString finding = u"数据库完整性检查失败：CHECK constraint failed in projects"_s;
        QTest::ignoreMessage(QtCriticalMsg, qUtf8Printable(finding));
        QVERIFY(!DatabaseManager::instance().open());
        QCOMPARE(DatabaseManager::instance().lastError(), finding);
    }
};

static const RegisteredTest<TestSchema> registered;

#include "TestSchema.moc"
