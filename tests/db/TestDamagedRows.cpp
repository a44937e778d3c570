#include "db/ContractDao.h"
#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "db/ProfileDao.h"
#include "db/ProjectDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/Warnings.h"

#include <limits>

using namespace Qt::StringLiterals;
using TestDatabase::run;

namespace {

QString entryWith(const QString& date)
{
    return u"INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
           "owner_account_type, counterparty_name, counterparty_account_type, category, "
           "project_id, risk_level, risk_auto_level, risk_reasons, risk_manual_override) VALUES "
           "(%1, X'E794B2', 'sideways', -700, 'bank', 5, '', 'gift', 'none', 'severe', '', "
           "'[broken', 'worse')"_s.arg(date);
}

// The second row cannot be computed: the smallest number has no absolute value.
struct BreakingDao final : BaseDao {
    QList<Transaction> entries()
    {
        static constexpr auto columns
            = std::to_array<Column<Transaction>>({ column<&Transaction::id>(u"id") });
        return readAll<Transaction>(columns,
            u"SELECT abs(x) AS id FROM (SELECT 1 AS x UNION ALL SELECT -9223372036854775807 - 1)"_s,
            {});
    }
};

} // namespace

/// Rows that the schema refuses but that a damaged or foreign file can hold: they must load.
class TestDamagedRows final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aListThatBreaksOffIsNotTakenForTheWhole()
    {
        BreakingDao dao;
        expectWarnings({ u"SQL error: integer overflow"_s });
        QVERIFY(dao.entries().isEmpty());
        QVERIFY(dao.lastError().contains(u"integer overflow"_s));
    }

    void init()
    {
        DatabaseTestCase::init();
        QCOMPARE(run({ u"PRAGMA ignore_check_constraints = ON"_s, u"PRAGMA foreign_keys = OFF"_s }),
            QString());
    }

    void ledgerEntriesLoad()
    {
        QCOMPARE(run({ entryWith(u"'2025-02-30'"_s) }), QString());
        const auto entries = TransactionDao().search({});
        QCOMPARE(entries.size(), 1);
        const Transaction& entry = entries.first();
        QVERIFY(!entry.transDate.isValid());
        QCOMPARE(entry.summary, u"甲"_s);
        QCOMPARE(entry.direction, Direction::In);
        QCOMPARE(entry.amountFen, qint64 { -700 });
        QCOMPARE(entry.ownerAccountType, AccountType::Unknown);
        QCOMPARE(entry.counterpartyName, u"5"_s);
        QCOMPARE(entry.counterpartyAccountType, AccountType::Unknown);
        QCOMPARE(entry.category, Category::Other);
        QCOMPARE(entry.projectId, qint64 { 0 });
        QCOMPARE(entry.riskLevel, RiskLevel::Normal);
        QVERIFY(entry.riskReasons.isEmpty());
        QCOMPARE(entry.riskManualOverride, RiskLevel::Normal);

        const auto stats = TransactionDao().categoryStats({}, {});
        QCOMPARE(stats.size(), 1);
        QCOMPARE(stats.first().category, Category::Other);
        QCOMPARE(TransactionDao().riskLevelCounts({}, {}).normal, qint64 { 1 });
    }

    void brokenDatesAreUnset_data()
    {
        QTest::addColumn<QString>("stored");
        addCase("empty", u"''"_s);
        addCase("no such day", u"'2025-02-30'"_s);
        addCase("other separators", u"'2025/01/02'"_s);
        addCase("single digits", u"'2025-1-2'"_s);
        addCase("with a time", u"'2025-01-02 10:00:00'"_s);
        addCase("wide digits", u"'２０２５-０１-０２'"_s);
        addCase("a sign among the digits", u"'-025-01-02'"_s);
        addCase("a number", u"20250102"_s);
    }

    void brokenDatesAreUnset()
    {
        QFETCH(QString, stored);
        QCOMPARE(run({ entryWith(stored) }), QString());
        QVERIFY(!TransactionDao().findById(1)->transDate.isValid());
    }

    void projectsAndContractsLoad()
    {
        QCOMPARE(
            run({ u"INSERT INTO projects (name, code, client_name, status, start_date, "
                  "budget_fen) VALUES ('n', 'p', 'c', 'lost', 'soon', 'much')"_s,
                u"INSERT INTO contracts (project_id, name, code, party_b, amount_fen, sign_date, "
                "status) VALUES (77, 'n', 'c', 'b', -1, '', 'lost')"_s }),
            QString());
        const auto projects = ProjectDao().list();
        QCOMPARE(projects.size(), 1);
        QCOMPARE(projects.first().status, ProjectStatus::Planning);
        QVERIFY(!projects.first().startDate.isValid());
        QCOMPARE(projects.first().budgetFen, qint64 { 0 });
        const auto contracts = ContractDao().listByProject(77);
        QCOMPARE(contracts.size(), 1);
        QCOMPARE(contracts.first().amountFen, qint64 { -1 });
        QCOMPARE(contracts.first().status, ContractStatus::Active);
        QVERIFY(!contracts.first().signDate.isValid());
    }

    void theProfileLoads()
    {
        QCOMPARE(run({ u"ALTER TABLE company_profile ADD COLUMN vat_rate TEXT DEFAULT 'x'"_s,
                     u"UPDATE company_profile SET password_enabled = 7, frequent_window_days = "
                     "99999999999, frequent_count = 'many', theme_mode = 'purple'"_s }),
            QString());
        const auto profile = ProfileDao().find();
        QVERIFY(profile);
        QVERIFY(!profile->passwordEnabled);
        QCOMPARE(profile->frequentWindowDays, std::numeric_limits<int>::max());
        QCOMPARE(profile->frequentCount, 0);
        QCOMPARE(profile->themeMode, u"purple"_s);
    }

    void vouchersAndLinksLoad()
    {
        QCOMPARE(
            run({ u"INSERT INTO vouchers (name, voucher_type, voucher_date, original_file_name, "
                  "stored_path, file_ext, file_size, sha256) VALUES ('n', 'video', 'x', '', "
                  "'../../a', '', -3, '')"_s,
                u"INSERT INTO entity_links (source_type, source_id, target_type, target_id) "
                "VALUES ('letter', -1, 'moon', 5)"_s }),
            QString());
        const auto vouchers = VoucherDao().search({});
        QCOMPARE(vouchers.size(), 1);
        QCOMPARE(vouchers.first().voucherType, VoucherType::Other);
        QVERIFY(!vouchers.first().voucherDate.isValid());
        QCOMPARE(vouchers.first().fileSize, qint64 { -3 });
        QVERIFY(LinkDao().linksByTarget(TargetType::Project, 5).isEmpty());
    }

    void documentsLoad()
    {
        QCOMPARE(
            run({ u"INSERT INTO documents (doc_type, doc_no, title, doc_year, doc_date, "
                  "fund_direction, settle_date, content_html, file_path) VALUES ('will', 'n', 't', "
                  "'MMXXV', 'x', 'sideways', 'later', '', '')"_s }),
            QString());
        const auto documents = DocumentDao().list();
        QCOMPARE(documents.size(), 1);
        QCOMPARE(documents.first().docType, DocType::AnnualDecision);
        QCOMPARE(documents.first().docYear, 0);
        QVERIFY(!documents.first().docDate.isValid() && !documents.first().settleDate.isValid());
        QCOMPARE(documents.first().fundDirection, Direction::In);
    }
};

static const RegisteredTest<TestDamagedRows> registered;

#include "TestDamagedRows.moc"
