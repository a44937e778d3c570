#include "db/LinkDao.h"
#include "db/ProjectDao.h"
#include "db/Stored.h"
#include "db/TransactionDao.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/Warnings.h"

using namespace Qt::StringLiterals;
using Stored::idsOf;
using TestDatabase::row;
using TestDatabase::run;

Q_DECLARE_METATYPE(TransactionFilter)

namespace {

qint64 addProject(const QString& name)
{
    return Stored::add<ProjectDao>(Project { .name = name });
}

qint64 add(const Transaction& entry = { .transDate = QDate(2025, 1, 1), .amountFen = 1 })
{
    return Stored::add<TransactionDao>(entry);
}

// Five entries of which each differs from the others in what filters look at.
bool addLedger()
{
    const qint64 project = addProject(u"网站"_s);
    const QList<Transaction> entries {
        { .transDate = QDate(2025, 1, 10),
            .summary = u"设计费 50%"_s,
            .amountFen = 500,
            .category = Category::BusinessIncome,
            .projectId = project },
        { .transDate = QDate(2025, 1, 20),
            .summary = u"借款"_s,
            .direction = Direction::Out,
            .amountFen = 700,
            .counterpartyName = u"张_三"_s,
            .category = Category::ShareholderOut },
        { .transDate = QDate(2025, 1, 20),
            .amountFen = 300,
            .ownerAccountType = AccountType::Private,
            .category = Category::ShareholderIn },
        { .transDate = QDate(2025, 2, 1),
            .direction = Direction::Out,
            .amountFen = 40,
            .category = Category::ExpenseReimburse },
        { .transDate = QDate(2024, 12, 31),
            .summary = u"设计费"_s,
            .amountFen = 900,
            .category = Category::BusinessIncome },
    };
    TransactionDao dao;
    return std::all_of(entries.begin(), entries.end(), add)
        && dao.updateAutoRisk(2, RiskLevel::High, {}) && dao.updateAutoRisk(3, RiskLevel::Low, {})
        && dao.setManualOverride(3, RiskLevel::High, u""_s);
}

QList<qint64> countsOf(const RiskLevelCounts& counts)
{
    return { counts.high, counts.medium, counts.low, counts.normal };
}

} // namespace

class TestTransactionDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void badEntriesAreRefusedAndLogged()
    {
        TransactionDao dao;
        Transaction entry { .transDate = QDate(2025, 1, 1) };
        expectWarnings({ u"SQL error: CHECK constraint failed: amount_fen > 0 Unable to "
                         "fetch row \\| INSERT INTO transactions \\(trans_date, summary, "_s });
        QVERIFY(!dao.insert(entry));
        QCOMPARE(entry.id, qint64 { 0 });
        QVERIFY(dao.lastError().startsWith(u"CHECK constraint failed"_s));

        expectWarnings({ u".*NOT NULL constraint failed: transactions.trans_date"_s });
        QVERIFY2(!add({ .amountFen = 1 }), "an entry without a date proves nothing");
    }

    void filtersRestrictTheSearch_data()
    {
        addColumns<TransactionFilter, QList<qint64>>("filter", "ids");
        const auto filterRow = [](const char* name, const TransactionFilter& filter,
                                   const QList<qint64>& ids) { addCase(name, filter, ids); };
        const QDate jan20(2025, 1, 20);
        filterRow("nothing: all, newest first, then stored last", {}, { 4, 3, 2, 1, 5 });
        filterRow("from a day on", { .dateFrom = jan20 }, { 4, 3, 2 });
        filterRow("up to a day", { .dateTo = jan20 }, { 3, 2, 1, 5 });
        filterRow("one day", { .dateFrom = jan20, .dateTo = jan20 }, { 3, 2 });
        filterRow("the wrong way round", { .dateFrom = jan20, .dateTo = QDate(2025, 1, 1) }, {});
        filterRow("owner's account", { .owner = AccountType::Private }, { 3 });
        filterRow("category", { .category = Category::BusinessIncome }, { 1, 5 });
        filterRow("risk in force", { .risk = RiskLevel::High }, { 3, 2 });
        filterRow("overridden risk", { .risk = RiskLevel::Low }, {});
        filterRow("project", { .projectId = 1 }, { 1 });
        filterRow("no project", { .projectId = -1 }, { 4, 3, 2, 1, 5 });
        filterRow("keyword in the summary", { .keyword = u" 设计 "_s }, { 1, 5 });
        filterRow("keyword in the counterparty", { .keyword = u"三"_s }, { 2 });
        filterRow("keyword with direction marks", { .keyword = u"\u202a设\u200e计"_s }, { 1, 5 });
        filterRow("blank keyword", { .keyword = u" 　"_s }, { 4, 3, 2, 1, 5 });
        filterRow("percent sign as wildcard", { .keyword = u"设%0"_s }, { 1 });
        filterRow("underscore as wildcard", { .keyword = u"张__"_s }, { 2 });
        filterRow("quotes are text", { .keyword = u"' OR 1=1 --"_s }, {});
        filterRow("limit", { .limit = 2 }, { 4, 3 });
        filterRow("all at once",
            { .dateFrom = QDate(2025, 1, 1),
                .dateTo = QDate(2025, 1, 31),
                .owner = AccountType::Company,
                .category = Category::BusinessIncome,
                .risk = RiskLevel::Normal,
                .projectId = 1,
                .keyword = u"费"_s,
                .limit = 5 },
            { 1 });
    }

    void filtersRestrictTheSearch()
    {
        QFETCH(TransactionFilter, filter);
        QVERIFY(addLedger());
        QTEST(idsOf(TransactionDao().search(filter)), "ids");
    }

    void searchesBringProjectAndVouchers()
    {
        QVERIFY(addLedger());
        LinkDao links;
        QVERIFY(links.link(SourceType::Voucher, 8, TargetType::Transaction, 1));
        QVERIFY(links.link(SourceType::Voucher, 9, TargetType::Transaction, 1));
        QVERIFY(links.link(SourceType::Document, 9, TargetType::Transaction, 1));
        QVERIFY(links.link(SourceType::Voucher, 9, TargetType::Project, 2));
        const auto entries = TransactionDao().search({ .dateTo = QDate(2025, 1, 20) });
        QCOMPARE(entries.at(2).projectName, u"网站"_s);
        QCOMPARE(entries.at(2).voucherCount, 2);
        QCOMPARE(entries.at(1).projectName, QString());
        QCOMPARE(entries.at(1).voucherCount, 0);
    }

    void ownerFlowsComeOldestFirst()
    {
        QVERIFY(addLedger());
        QVERIFY(add({ .transDate = QDate(2025, 1, 1),
            .amountFen = 1,
            .category = Category::ShareholderIn }));
        const auto flows = TransactionDao().listShareholderFlows();
        QCOMPARE(idsOf(flows), (QList<qint64> { 6, 2, 3, 4 }));
        const auto dates = TransactionDao().shareholderFlowDates();
        QCOMPARE(dates.size(), flows.size());
        for (qsizetype i = 0; i < flows.size(); ++i) {
            QCOMPARE(dates.at(i).id, flows.at(i).id);
            QCOMPARE(dates.at(i).date, flows.at(i).transDate);
        }
    }

    void projectsAddUp()
    {
        const qint64 project = addProject(u"网站"_s);
        Transaction entry { .transDate = QDate(2025, 1, 1), .projectId = project };
        for (const qint64 fen : { 9'000'000'000LL, 50LL, -14LL, -7LL }) {
            entry.direction = fen > 0 ? Direction::In : Direction::Out;
            entry.amountFen = qAbs(fen);
            QVERIFY(add(entry));
        }
        const ProjectTotals totals = TransactionDao().projectTotals(project);
        QCOMPARE(totals.incomeFen, qint64 { 9'000'000'050 });
        QCOMPARE(totals.expenseFen, qint64 { 21 });
        QCOMPARE(totals.count, qint64 { 4 });
        const ProjectTotals none = TransactionDao().projectTotals(99);
        QCOMPARE(none.incomeFen + none.expenseFen + none.count, qint64 { 0 });
    }

    void categoriesAddUp()
    {
        QVERIFY(addLedger());
        const auto stats = [](QDate from, QDate to) {
            QString text;
            for (const CategoryStat& stat : TransactionDao().categoryStats(from, to))
                text += u"%1 %2 %3 %4;"_s.arg(codeOf(stat.category), QString::number(stat.count),
                    QString::number(stat.incomeFen), QString::number(stat.expenseFen));
            return text;
        };
        const QString others = u"shareholder_out 1 0 700;shareholder_in 1 300 0;"
                               "expense_reimburse 1 0 40;"_s;
        QCOMPARE(stats({}, {}), u"business_income 2 1400 0;"_s + others); // largest turnover first
        QCOMPARE(stats({ 2025, 1, 20 }, {}), others);
        QCOMPARE(stats({}, { 2024, 12, 31 }), u"business_income 1 900 0;"_s);
        QCOMPARE(stats({ 2023, 1, 1 }, { 2023, 12, 31 }), QString());
    }

    void riskLevelsAreCounted()
    {
        QVERIFY(addLedger());
        TransactionDao dao;
        QVERIFY(dao.updateAutoRisk(4, RiskLevel::Medium, {}));
        QVERIFY(dao.updateAutoRisk(5, RiskLevel::Low, {}));
        QCOMPARE(countsOf(dao.riskLevelCounts({}, {})), (QList<qint64> { 2, 1, 1, 1 }));
        QCOMPARE(countsOf(dao.riskLevelCounts(QDate(2025, 1, 1), QDate(2025, 1, 31))),
            (QList<qint64> { 2, 0, 0, 1 }));
    }

    void theAutomaticLevelIsStored_data()
    {
        addColumns<bool, RiskLevel>("overridden", "inForce");
        addCase("no override", false, RiskLevel::High);
        addCase("an override wins", true, RiskLevel::Low);
    }

    void theAutomaticLevelIsStored()
    {
        QFETCH(bool, overridden);
        TransactionDao dao;
        const qint64 id = add();
        if (overridden)
            QVERIFY(dao.setManualOverride(id, RiskLevel::Low, u"已核实"_s));
        const QStringList reasons { u"经营款进入私人账户"_s, u"引号 \" 与 \\"_s };
        QVERIFY(dao.updateAutoRisk(id, RiskLevel::High, reasons));
        QVERIFY(dao.update({ .id = id, .transDate = QDate(2025, 1, 2), .amountFen = 2 }));
        const auto entry = dao.findById(id);
        QTEST(entry->riskLevel, "inForce");
        QCOMPARE(entry->riskAutoLevel, RiskLevel::High);
        QCOMPARE(entry->riskReasons, reasons);
        QCOMPARE(row(u"SELECT typeof(risk_reasons) FROM transactions"_s), u"text"_s);
        const auto evaluated
            = QDateTime::fromString(entry->riskEvaluatedAt, u"yyyy-MM-dd HH:mm:ss"_s);
        QVERIFY(qAbs(evaluated.secsTo(QDateTime::currentDateTime())) < 60);

        QVERIFY(dao.updateAutoRisk(id, RiskLevel::Normal, {}));
        QCOMPARE(row(u"SELECT risk_auto_level, risk_reasons FROM transactions"_s), u"normal|∅"_s);
    }

    void anOverrideReplacesTheAutomaticLevelUntilItIsReleased()
    {
        QVERIFY(addLedger());
        TransactionDao dao;
        QVERIFY(dao.setManualOverride(2, RiskLevel::Normal, u"有协议"_s));
        const auto entry = dao.findById(2);
        QCOMPARE(entry->riskLevel, RiskLevel::Normal);
        QCOMPARE(entry->riskAutoLevel, RiskLevel::High);
        QCOMPARE(entry->riskManualOverride, RiskLevel::Normal);
        QCOMPARE(entry->riskManualNote, u"有协议"_s);
        QCOMPARE(dao.findById(1)->riskManualOverride, std::nullopt);

        QVERIFY(dao.setManualOverride(3, std::nullopt, u" 撤销 "_s));
        QCOMPARE(row(u"SELECT risk_level, risk_manual_override, risk_manual_note FROM "
                     "transactions WHERE id = 3"_s),
            u"low|∅| 撤销 "_s);
    }

    // Quotes, escapes and what is no text are in the corpus of the hostile tests.
    void reasonsAreReadFromAnyJson_data()
    {
        addColumns<QString, QStringList>("stored", "reasons");
        addCase("blank", u"'  '"_s, QStringList());
        addCase("blanks around", u"' [\"甲，乙\"] '"_s, QStringList { u"甲，乙"_s });
        addCase("empty texts", u"'[\"\",\"\"]'"_s, QStringList { u""_s, u""_s });
        addCase("blank after the comma", u"'[\"甲\", \"乙\"]'"_s, QStringList { u"甲"_s, u"乙"_s });
        addCase("one text left open", u"'[\"甲\",\"]'"_s, QStringList());
        addCase("spread over lines", u"' [\n \"甲\" ,\n \"\\u4e59\" ]\n'"_s,
            QStringList { u"甲"_s, u"乙"_s });
        addCase("no array", u"'{\"a\": 1}'"_s, QStringList());
        addCase("as bytes", u"CAST('[\"甲\"]' AS BLOB)"_s, QStringList { u"甲"_s });
    }

    void reasonsAreReadFromAnyJson()
    {
        QFETCH(QString, stored);
        const qint64 id = add();
        QCOMPARE(run({ u"UPDATE transactions SET risk_reasons = "_s + stored }), QString());
        QTEST(TransactionDao().findById(id)->riskReasons, "reasons");
    }

    void aBrokenStatementKeepsItsReason()
    {
        QCOMPARE(run({ u"ALTER TABLE transactions RENAME TO hidden"_s }), QString());
        TransactionDao dao;
        QTest::ignoreMessage(QtWarningMsg,
            "SQL error: no such table: transactions Unable to execute statement | "
            "SELECT * FROM transactions WHERE id = :id");
        QVERIFY(!dao.findById(1));
        QCOMPARE(dao.lastError(), u"no such table: transactions Unable to execute statement"_s);
        expectWarnings(QStringList(2, u"SQL error: no such table"_s));
        QVERIFY(dao.search({}).isEmpty());
        QCOMPARE(dao.projectTotals(1).count, qint64 { 0 });
    }
};

static const RegisteredTest<TestTransactionDao> registered;

#include "TestTransactionDao.moc"
