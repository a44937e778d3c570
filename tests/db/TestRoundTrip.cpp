#include "db/ContractDao.h"
#include "db/DocumentDao.h"
#include "db/ProfileDao.h"
#include "db/ProjectDao.h"
#include "db/Stored.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"

using namespace Qt::StringLiterals;
using TestDatabase::row;
using TestDatabase::run;

namespace {

// A record in its columns as they are stored: every field set to something of its own, and as few
// as possible.
template <typename Record> struct Sample {
    QString table;
    QString columns;
    Record full;
    QString fullText;
    Record bare;
    QString bareText;
    QString updatedText; // the bare row updated with the full record; empty: no updates
};

// What was read is written again, so a field that is read wrongly shows in the row.
template <typename Dao, typename Record> void checkRoundTrip(const Sample<Record>& sample)
{
    Dao dao;
    const auto stored = [&](qint64 id) {
        return row(u"SELECT %1 FROM %2 WHERE id = %3"_s.arg(
            sample.columns, sample.table, QString::number(id)));
    };
    Record bare = sample.bare;
    QVERIFY(dao.insert(bare));
    QCOMPARE(stored(bare.id), sample.bareText);
    const auto bareRead = dao.findById(bare.id);
    QVERIFY(bareRead && dao.remove(bare.id));
    QVERIFY(!dao.findById(bare.id));
    bare = *bareRead;
    QVERIFY(dao.insert(bare));
    QCOMPARE(stored(bare.id), sample.bareText);

    Record full = sample.full;
    QVERIFY(dao.insert(full));
    QCOMPARE(full.id, bare.id + 1);
    QCOMPARE(stored(full.id), sample.fullText);
    QCOMPARE(
        run({ u"UPDATE %1 SET created_at = '2001-02-03 04:05:06'"_s.arg(sample.table) }), u""_s);
    const auto fullRead = dao.findById(full.id);
    QVERIFY(fullRead);
    QCOMPARE(fullRead->id, full.id);
    QCOMPARE(fullRead->createdAt, u"2001-02-03 04:05:06"_s);
    if constexpr (requires { full.updatedAt; })
        QCOMPARE(fullRead->updatedAt, row(u"SELECT updated_at FROM "_s + sample.table));
    QVERIFY(dao.remove(full.id));
    QCOMPARE(stored(bare.id), sample.bareText);
    full = *fullRead;
    QVERIFY(dao.insert(full));
    QCOMPARE(stored(full.id), sample.fullText);

    if constexpr (requires { dao.update(full); }) {
        const qint64 neighbour = full.id;
        QVERIFY(run({ u"UPDATE %1 SET note = 'kept'"_s.arg(sample.table) }).isEmpty());
        if constexpr (requires { full.code; })
            full.code += u'b'; // no other row may have it
        full.id = bare.id;
        QVERIFY(dao.update(full));
        QCOMPARE(stored(bare.id), sample.updatedText);
        QVERIFY(stored(neighbour).endsWith(u"|kept"_s));
        bare.id = full.id;
        QVERIFY(dao.update(bare));
        QVERIFY(stored(bare.id).endsWith(u"|∅"_s));
    }
}

} // namespace

/// Every field of every record reaches its column and comes back.
class TestRoundTrip final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void projects()
    {
        checkRoundTrip<ProjectDao>(Sample<Project> { u"projects"_s,
            u"name, code, client_name, status, start_date, end_date, budget_fen, manager, note"_s,
            { .name = u"网站"_s,
                .code = u"自编-7"_s,
                .clientName = u"乙公司"_s,
                .status = ProjectStatus::Completed,
                .startDate = QDate(2025, 1, 2),
                .endDate = QDate(2025, 3, 4),
                .budgetFen = 6'000'000'000,
                .manager = u"王 "_s,
                .note = u" 备注"_s },
            u"网站|自编-7|乙公司|completed|2025-01-02|2025-03-04|6000000000|王 | 备注"_s,
            { .code = u"x"_s, .manager = u" "_s, .note = u"　"_s }, u"|x||planning|∅|∅|∅|∅|∅"_s,
            u"网站|自编-7b|乙公司|completed|2025-01-02|2025-03-04|6000000000|王 | 备注"_s });
    }

    void contracts()
    {
        QVERIFY(Stored::add<ProjectDao>(Project {}) && Stored::add<ProjectDao>(Project {}));
        const QString full = u"2|合同|%1|丙公司|7000000000|2025-05-06|terminated|条款 "_s;
        checkRoundTrip<ContractDao>(Sample<Contract> { u"contracts"_s,
            u"project_id, name, code, party_b, amount_fen, sign_date, status, note"_s,
            { .projectId = 2,
                .name = u"合同"_s,
                .code = u"自编-8"_s,
                .partyB = u"丙公司"_s,
                .amountFen = 7'000'000'000,
                .signDate = QDate(2025, 5, 6),
                .status = ContractStatus::Terminated,
                .note = u"条款 "_s },
            full.arg(u"自编-8"_s),
            { .projectId = 1, .code = u"x"_s, .signDate = QDate(2020, 1, 1), .note = u" "_s },
            u"1||x||0|2020-01-01|active|∅"_s, full.arg(u"自编-8b"_s) });
    }

    void ledgerEntries()
    {
        QVERIFY(Stored::add<ProjectDao>(Project {}));
        const QString full = u"2025-03-04|摘要 it's|out|5000000001|private|对方|company|tax_fee|1"
                             "|normal|normal|∅|∅|∅|∅| 备注 "_s;
        checkRoundTrip<TransactionDao>(Sample<Transaction> { u"transactions"_s,
            u"trans_date, summary, direction, amount_fen, owner_account_type, counterparty_name, "
            "counterparty_account_type, category, project_id, risk_level, risk_auto_level, "
            "risk_reasons, risk_manual_override, risk_manual_note, risk_evaluated_at, note"_s,
            { .transDate = QDate(2025, 3, 4),
                .summary = u"摘要 it's"_s,
                .direction = Direction::Out,
                .amountFen = 5'000'000'001,
                .ownerAccountType = AccountType::Private,
                .counterpartyName = u"对方"_s,
                .counterpartyAccountType = AccountType::Company,
                .category = Category::TaxFee,
                .projectId = 1,
                .note = u" 备注 "_s,
                .riskLevel = RiskLevel::High }, // never written with an entry
            full, { .transDate = QDate(2025, 1, 1), .amountFen = 1, .note = u" 　\t"_s },
            u"2025-01-01||in|1|company||unknown|other|∅|normal|normal|∅|∅|∅|∅|∅"_s, full });
    }

    void vouchers()
    {
        checkRoundTrip<VoucherDao>(Sample<Voucher> { u"vouchers"_s,
            u"name, voucher_type, voucher_date, original_file_name, stored_path, file_ext, "
            "file_size, sha256, note"_s,
            { .name = u"回单"_s,
                .voucherType = VoucherType::Delivery,
                .voucherDate = QDate(2025, 1, 2),
                .originalFileName = u"原文件.PDF"_s,
                .storedPath = u"voucher_assets/x.pdf"_s,
                .fileExt = u"pdf"_s,
                .fileSize = 9'000'000'000,
                .sha256 = u"abc123"_s,
                .note = u" 备注"_s },
            u"回单|delivery|2025-01-02|原文件.PDF|voucher_assets/x.pdf|pdf|9000000000|abc123| 备注"_s,
            { .voucherDate = QDate(2024, 3, 4), .storedPath = u"own"_s, .note = u" "_s },
            u"|other|2024-03-04||own||0||∅"_s,
            // An update leaves the file alone.
            u"回单|delivery|2025-01-02||own||0|| 备注"_s });
    }

    void documents()
    {
        checkRoundTrip<DocumentDao>(Sample<DocumentRecord> { u"documents"_s,
            u"doc_type, doc_no, title, doc_year, doc_date, fund_direction, fund_nature, "
            "settle_date, extra_text, selected_items, content_html, file_path"_s,
            Stored::wholeDocument(),
            u"fund_decision|KYR-FD-2025-0001|标题|2024|2025-01-02|out| 借款 |2025-12-31|补充|[1,2]"
            "|<p>正文</p>|/data/a.pdf"_s,
            { .docNo = u"n"_s,
                .docDate = QDate(2025, 1, 1),
                .fundNature = u" 　"_s,
                .extraText = u"\n"_s },
            u"annual_decision|n||∅|2025-01-01|∅|∅|∅|∅|∅||"_s, {} });
        const auto inward = Stored::add<DocumentDao>(DocumentRecord {
            .docNo = u"m"_s, .docDate = QDate(2025, 1, 1), .fundDirection = Direction::In });
        QCOMPARE(DocumentDao().findById(inward)->fundDirection, Direction::In);
    }

    void theProfile()
    {
        ProfileDao dao;
        const CompanyProfile fresh = dao.load();
        CompanyProfile full { .createdAt = fresh.createdAt, .updatedAt = fresh.updatedAt };
        QVERIFY2(fresh == full, "a new row carries the defaults");

        full = { .companyName = u"甲公司"_s,
            .creditCode = u"9144"_s,
            .shareholderName = u"张三"_s,
            .bankName = u"银行"_s,
            .bankAccount = u"6222"_s,
            .address = u"地址"_s,
            .phone = u"电话"_s,
            .largeAmountFen = 8'000'000'000,
            .frequentWindowDays = 45,
            .frequentCount = 6,
            .passwordEnabled = true,
            .passwordHash = u"散列"_s,
            .passwordSalt = u"盐"_s,
            .disclaimerVersion = u"V1"_s,
            .lastBackupAt = u"2025-01-02 03:04:05"_s,
            .themeMode = u"dark"_s };
        QVERIFY(dao.save(full));
        const QString others
            = u"SELECT password_enabled, password_hash, password_salt, disclaimer_version, "
              "last_backup_at, theme_mode, disclaimer_confirmed_at FROM company_profile"_s;
        QCOMPARE(row(others), u"0|∅|∅|∅|∅|light|∅"_s);
        QVERIFY(dao.setPassword(true, u"散列"_s, u"盐"_s) && dao.confirmDisclaimer(u"V1"_s)
            && dao.setLastBackupAt(QDateTime(QDate(2025, 1, 2), QTime(3, 4, 5)))
            && dao.setThemeMode(u"dark"_s));
        QVERIFY(run({ u"UPDATE company_profile SET created_at = '2001-02-03'"_s }).isEmpty());
        QCOMPARE(row(u"SELECT company_name, credit_code, shareholder_name, bank_name, "
                     "bank_account, address, phone, large_amount_fen, frequent_window_days, "
                     "frequent_count FROM company_profile"_s),
            u"甲公司|9144|张三|银行|6222|地址|电话|8000000000|45|6"_s);

        const CompanyProfile stored = dao.load();
        full.createdAt = u"2001-02-03"_s;
        full.updatedAt = row(u"SELECT updated_at FROM company_profile"_s);
        full.disclaimerConfirmedAt = stored.disclaimerConfirmedAt;
        QVERIFY(stored == full);
        const auto confirmed
            = QDateTime::fromString(stored.disclaimerConfirmedAt, u"yyyy-MM-dd HH:mm:ss"_s);
        QVERIFY(qAbs(confirmed.secsTo(QDateTime::currentDateTime())) < 60);

        const QString before = row(others);
        QCOMPARE(
            before, u"1|散列|盐|V1|2025-01-02 03:04:05|dark|"_s + stored.disclaimerConfirmedAt);
        QVERIFY(dao.save(CompanyProfile()));
        QCOMPARE(row(others), before);
    }
};

static const RegisteredTest<TestRoundTrip> registered;

#include "TestRoundTrip.moc"
