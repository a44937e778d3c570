#include "db/TestTransactionDao.h"

#include "core/TextRules.h"
#include "db/LinkDao.h"
#include "db/ProjectDao.h"
#include "db/TransactionDao.h"
#include "support/TestDatabase.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using TestDatabase::row;
using TestDatabase::run;

Q_DECLARE_METATYPE(TransactionFilter)

namespace {

qint64 addProject(const QString& name)
{
    Project project { .name = name, .clientName = u"客户"_s };
    return ProjectDao().insert(project) ? project.id : 0;
}

Transaction entryOf(const QString& date, const QString& summary, Direction direction, qint64 fen,
    Category category = Category::Other)
{
    Transaction entry;
    entry.transDate = TextRules::dateFromText(date);
    entry.summary = summary;
    entry.direction = direction;
    entry.amountFen = fen;
    entry.category = category;
    return entry;
}

qint64 add(Transaction entry)
{
    return TransactionDao().insert(entry) ? entry.id : 0;
}

// Five entries of which each differs from the others in what filters look at.
bool addLedger()
{
    const qint64 project = addProject(u"网站"_s);
    Transaction a = entryOf(u"2025-01-10"_s, u"设计费 50%"_s, Direction::In, 500);
    a.category = Category::BusinessIncome;
    a.projectId = project;
    Transaction b = entryOf(u"2025-01-20"_s, u"借款"_s, Direction::Out, 700);
    b.category = Category::ShareholderOut;
    b.counterpartyName = u"张_三"_s;
    Transaction c = entryOf(u"2025-01-20"_s, u"归还"_s, Direction::In, 300);
    c.category = Category::ShareholderIn;
    c.ownerAccountType = AccountType::Private;
    Transaction d = entryOf(u"2025-02-01"_s, u"报销"_s, Direction::Out, 40);
    d.category = Category::ExpenseReimburse;
    Transaction e = entryOf(u"2024-12-31"_s, u"设计费"_s, Direction::In, 900);
    e.category = Category::BusinessIncome;
    for (Transaction entry : { a, b, c, d, e }) {
        if (!add(entry))
            return false;
    }
    TransactionDao dao;
    return dao.updateAutoRisk(2, RiskLevel::High, {}) && dao.updateAutoRisk(3, RiskLevel::Low, {})
        && dao.setManualOverride(3, RiskLevel::High, u""_s);
}

QList<qint64> idsOf(const QList<Transaction>& entries)
{
    QList<qint64> ids;
    for (const Transaction& entry : entries)
        ids += entry.id;
    return ids;
}

Transaction distinctEntry(qint64 project)
{
    Transaction entry = entryOf(u"2025-03-04"_s, u"摘要 it's"_s, Direction::Out, 5'000'000'001);
    entry.ownerAccountType = AccountType::Private;
    entry.counterpartyName = u"对方"_s;
    entry.counterpartyAccountType = AccountType::Company;
    entry.category = Category::TaxFee;
    entry.projectId = project;
    entry.note = u" 备注 "_s;
    return entry;
}

} // namespace

void TestTransactionDao::everyFieldIsStored()
{
    Transaction entry = distinctEntry(addProject(u"网站"_s));
    entry.riskLevel = RiskLevel::High; // never written with an entry
    QVERIFY(TransactionDao().insert(entry));
    QCOMPARE(entry.id, qint64 { 1 });
    QCOMPARE(row(u"SELECT id, trans_date, summary, direction, amount_fen, owner_account_type, "
                 "counterparty_name, counterparty_account_type, category, project_id, note, "
                 "risk_level, risk_auto_level, risk_reasons, risk_manual_override, "
                 "risk_manual_note, risk_evaluated_at FROM transactions"_s),
        u"1|2025-03-04|摘要 it's|out|5000000001|private|对方|company|tax_fee|1| 备注 "
        "|normal|normal|∅|∅|∅|∅"_s);

    const auto stored = TransactionDao().findById(1);
    QVERIFY(stored);
    QCOMPARE(stored->id, qint64 { 1 });
    QCOMPARE(stored->transDate, entry.transDate);
    QCOMPARE(stored->summary, entry.summary);
    QCOMPARE(stored->direction, entry.direction);
    QCOMPARE(stored->amountFen, entry.amountFen);
    QCOMPARE(stored->ownerAccountType, entry.ownerAccountType);
    QCOMPARE(stored->counterpartyName, entry.counterpartyName);
    QCOMPARE(stored->counterpartyAccountType, entry.counterpartyAccountType);
    QCOMPARE(stored->category, entry.category);
    QCOMPARE(stored->projectId, entry.projectId);
    QCOMPARE(stored->note, entry.note);
    QCOMPARE(stored->riskLevel, RiskLevel::Normal);
    QCOMPARE(stored->riskAutoLevel, RiskLevel::Normal);
    QVERIFY(stored->riskReasons.isEmpty() && !stored->riskManualOverride);
    QCOMPARE(stored->createdAt + u'|' + stored->updatedAt,
        row(u"SELECT created_at, updated_at FROM transactions"_s));
}

void TestTransactionDao::everyFieldIsUpdated()
{
    TransactionDao dao;
    const qint64 id = add(entryOf(u"2024-01-01"_s, u"旧"_s, Direction::In, 1));
    const qint64 other = add(entryOf(u"2024-01-01"_s, u"旧"_s, Direction::In, 1));
    QVERIFY(dao.updateAutoRisk(id, RiskLevel::Medium, { u"理由"_s }));
    Transaction entry = distinctEntry(addProject(u"网站"_s));
    entry.id = id;
    QVERIFY(dao.update(entry));
    QCOMPARE(row(u"SELECT trans_date, summary, direction, amount_fen, owner_account_type, "
                 "counterparty_name, counterparty_account_type, category, project_id, note, "
                 "risk_level, risk_reasons FROM transactions WHERE id = 1"_s),
        u"2025-03-04|摘要 it's|out|5000000001|private|对方|company|tax_fee|1| 备注 "
        "|medium|[\"理由\"]"_s);
    QCOMPARE(dao.findById(other)->summary, u"旧"_s);
    QVERIFY(dao.remove(id));
    QCOMPARE(idsOf(dao.search({})), QList<qint64> { other });
}

void TestTransactionDao::emptyPartsAreStoredAsNull()
{
    Transaction entry = entryOf(u"2025-01-01"_s, QString(), Direction::In, 1);
    entry.note = u" 　\t"_s;
    QVERIFY(add(entry));
    QCOMPARE(row(u"SELECT summary, counterparty_name, project_id, note FROM transactions"_s),
        u"||∅|∅"_s);
    QVERIFY(!TransactionDao().findById(1)->projectId);
}

void TestTransactionDao::aMissingRowIsAbsent()
{
    QVERIFY(!TransactionDao().findById(99));
}

void TestTransactionDao::badEntriesAreRefusedAndLogged()
{
    TransactionDao dao;
    Transaction entry = entryOf(u"2025-01-01"_s, u"s"_s, Direction::In, 0);
    QTest::ignoreMessage(QtWarningMsg,
        QRegularExpression(u"^SQL error: CHECK constraint failed: amount_fen > 0 Unable to fetch "
                           "row \\| INSERT INTO transactions \\(trans_date, summary, "_s));
    QVERIFY(!dao.insert(entry));
    QCOMPARE(entry.id, qint64 { 0 });
    QVERIFY(dao.lastError().startsWith(u"CHECK constraint failed"_s));

    entry = entryOf(QString(), u"s"_s, Direction::In, 1);
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(u"NOT NULL constraint failed: transactions.trans_date"_s));
    QVERIFY2(!dao.insert(entry), "an entry without a date proves nothing");
}

void TestTransactionDao::filtersRestrictTheSearch_data()
{
    QTest::addColumn<TransactionFilter>("filter");
    QTest::addColumn<QList<qint64>>("ids");
    const auto filterRow = [](const char* name, const TransactionFilter& filter,
                               const QList<qint64>& ids) { QTest::newRow(name) << filter << ids; };
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

void TestTransactionDao::filtersRestrictTheSearch()
{
    QFETCH(TransactionFilter, filter);
    QVERIFY(addLedger());
    QTEST(idsOf(TransactionDao().search(filter)), "ids");
}

void TestTransactionDao::searchesBringProjectAndVouchers()
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

void TestTransactionDao::ownerFlowsComeOldestFirst()
{
    QVERIFY(addLedger());
    QVERIFY(add(entryOf(u"2025-01-01"_s, u"早"_s, Direction::In, 1, Category::ShareholderIn)));
    const auto flows = TransactionDao().listShareholderFlows();
    QCOMPARE(idsOf(flows), (QList<qint64> { 6, 2, 3, 4 }));
    const auto dates = TransactionDao().shareholderFlowDates();
    QCOMPARE(dates.size(), flows.size());
    for (qsizetype i = 0; i < flows.size(); ++i) {
        QCOMPARE(dates.at(i).id, flows.at(i).id);
        QCOMPARE(dates.at(i).date, flows.at(i).transDate);
    }
}

void TestTransactionDao::theEvaluationReadsWhatItLooksAt()
{
    QVERIFY(addLedger());
    Transaction last = distinctEntry(1);
    QVERIFY(TransactionDao().insert(last));
    QVERIFY(LinkDao().link(SourceType::Voucher, 8, TargetType::Transaction, 1));
    const auto all = TransactionDao().search({});
    const auto evaluated = TransactionDao().entriesToEvaluate();
    QCOMPARE(idsOf(evaluated), idsOf(all));
    for (qsizetype i = 0; i < all.size(); ++i) {
        QCOMPARE(evaluated.at(i).direction, all.at(i).direction);
        QCOMPARE(evaluated.at(i).amountFen, all.at(i).amountFen);
        QCOMPARE(evaluated.at(i).ownerAccountType, all.at(i).ownerAccountType);
        QCOMPARE(evaluated.at(i).category, all.at(i).category);
        QCOMPARE(evaluated.at(i).note, all.at(i).note);
        QCOMPARE(evaluated.at(i).voucherCount, all.at(i).voucherCount);
    }
    QCOMPARE(evaluated.first().note, last.note);
    QCOMPARE(evaluated.at(4).voucherCount, 1);
}

void TestTransactionDao::projectsAddUp()
{
    const qint64 project = addProject(u"网站"_s);
    for (const qint64 fen : { 9'000'000'000LL, 50LL }) {
        Transaction entry = entryOf(u"2025-01-01"_s, u"s"_s, Direction::In, fen);
        entry.projectId = project;
        QVERIFY(add(entry));
        entry.direction = Direction::Out;
        entry.amountFen = 7;
        QVERIFY(add(entry));
    }
    const ProjectTotals totals = TransactionDao().projectTotals(project);
    QCOMPARE(totals.incomeFen, qint64 { 9'000'000'050 });
    QCOMPARE(totals.expenseFen, qint64 { 14 });
    QCOMPARE(totals.count, qint64 { 4 });
    const ProjectTotals none = TransactionDao().projectTotals(99);
    QCOMPARE(none.incomeFen + none.expenseFen + none.count, qint64 { 0 });
}

void TestTransactionDao::categoriesAddUp_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    QTest::addColumn<QString>("stats");
    const QString income = u"business_income 2 1400 0;"_s;
    const QString reimbursed = u"expense_reimburse 1 0 40;"_s;
    const QString owner = u"shareholder_out 1 0 700;shareholder_in 1 300 0;"_s;
    QTest::newRow("everything, largest turnover first")
        << QDate() << QDate() << income + owner + reimbursed;
    QTest::newRow("from a day on") << QDate(2025, 1, 20) << QDate() << owner + reimbursed;
    QTest::newRow("up to a day") << QDate() << QDate(2024, 12, 31) << u"business_income 1 900 0;"_s;
    QTest::newRow("a range without entries")
        << QDate(2023, 1, 1) << QDate(2023, 12, 31) << QString();
}

void TestTransactionDao::categoriesAddUp()
{
    QFETCH(QDate, from);
    QFETCH(QDate, to);
    QVERIFY(addLedger());
    QString text;
    for (const CategoryStat& stat : TransactionDao().categoryStats(from, to))
        text += u"%1 %2 %3 %4;"_s.arg(codeOf(stat.category), QString::number(stat.count),
            QString::number(stat.incomeFen), QString::number(stat.expenseFen));
    QTEST(text, "stats");
}

void TestTransactionDao::riskLevelsAreCounted()
{
    QVERIFY(addLedger());
    QVERIFY(TransactionDao().updateAutoRisk(4, RiskLevel::Medium, {}));
    QVERIFY(TransactionDao().updateAutoRisk(5, RiskLevel::Low, {}));
    const RiskLevelCounts all = TransactionDao().riskLevelCounts({}, {});
    QCOMPARE((QList<qint64> { all.high, all.medium, all.low, all.normal }),
        (QList<qint64> { 2, 1, 1, 1 }));
    const RiskLevelCounts some
        = TransactionDao().riskLevelCounts(QDate(2025, 1, 1), QDate(2025, 1, 31));
    QCOMPARE((QList<qint64> { some.high, some.medium, some.low, some.normal }),
        (QList<qint64> { 2, 0, 0, 1 }));
}

void TestTransactionDao::theAutomaticLevelIsStored_data()
{
    QTest::addColumn<bool>("overridden");
    QTest::addColumn<RiskLevel>("inForce");
    QTest::newRow("no override") << false << RiskLevel::High;
    QTest::newRow("an override wins") << true << RiskLevel::Low;
}

void TestTransactionDao::theAutomaticLevelIsStored()
{
    QFETCH(bool, overridden);
    TransactionDao dao;
    const qint64 id = add(entryOf(u"2025-01-01"_s, u"s"_s, Direction::In, 1));
    if (overridden)
        QVERIFY(dao.setManualOverride(id, RiskLevel::Low, u"已核实"_s));
    const QStringList reasons { u"经营款进入私人账户"_s, u"引号 \" 与 \\"_s };
    QVERIFY(dao.updateAutoRisk(id, RiskLevel::High, reasons));
    const auto entry = dao.findById(id);
    QTEST(entry->riskLevel, "inForce");
    QCOMPARE(entry->riskAutoLevel, RiskLevel::High);
    QCOMPARE(entry->riskReasons, reasons);
    QCOMPARE(row(u"SELECT typeof(risk_reasons) FROM transactions"_s), u"text"_s);
    const auto evaluated = QDateTime::fromString(entry->riskEvaluatedAt, u"yyyy-MM-dd HH:mm:ss"_s);
    QVERIFY(qAbs(evaluated.secsTo(QDateTime::currentDateTime())) < 60);

    QVERIFY(dao.updateAutoRisk(id, RiskLevel::Normal, {}));
    QCOMPARE(row(u"SELECT risk_auto_level, risk_reasons FROM transactions"_s), u"normal|∅"_s);
}

void TestTransactionDao::manyLevelsAreStoredAtOnce()
{
    QVERIFY(addLedger());
    const QList<AutoRisk> results { { 1, RiskLevel::Low, { u"甲"_s } },
        { 2, RiskLevel::Normal, {} }, { 3, RiskLevel::Medium, { u"乙"_s, u"丙"_s } } };
    QCOMPARE(TransactionDao().updateAutoRisks(results), 3);
    QCOMPARE(TestDatabase::rows(u"SELECT risk_level, risk_auto_level, risk_reasons, "
                                "risk_evaluated_at IS NULL FROM transactions ORDER BY id"_s),
        (QStringList { u"low|low|[\"甲\"]|0"_s, u"normal|normal|∅|0"_s,
            u"high|medium|[\"乙\",\"丙\"]|0"_s, u"normal|normal|∅|1"_s, u"normal|normal|∅|1"_s }));
}

void TestTransactionDao::manyLevelsStopAtTheFirstFailure()
{
    QVERIFY(addLedger());
    QCOMPARE(run({ u"CREATE TEMP TRIGGER no BEFORE UPDATE ON transactions WHEN NEW.id = 4 BEGIN "
                   "SELECT RAISE(ABORT, 'not this one'); END"_s }),
        QString());
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(u"^SQL error: not this one .* \\| UPDATE transactions"_s));
    const QList<AutoRisk> results { { 1, RiskLevel::Low, {} }, { 4, RiskLevel::Low, {} },
        { 5, RiskLevel::Low, {} } };
    QCOMPARE(TransactionDao().updateAutoRisks(results), 1);
    QCOMPARE(TestDatabase::rows(u"SELECT id FROM transactions WHERE risk_level = 'low'"_s),
        QStringList { u"1"_s });
}

void TestTransactionDao::anOverrideReplacesTheAutomaticLevel()
{
    QVERIFY(addLedger());
    QVERIFY(TransactionDao().setManualOverride(2, RiskLevel::Normal, u"有协议"_s));
    const auto entry = TransactionDao().findById(2);
    QCOMPARE(entry->riskLevel, RiskLevel::Normal);
    QCOMPARE(entry->riskAutoLevel, RiskLevel::High);
    QCOMPARE(entry->riskManualOverride, RiskLevel::Normal);
    QCOMPARE(entry->riskManualNote, u"有协议"_s);
    QCOMPARE(TransactionDao().findById(1)->riskManualOverride, std::nullopt);
}

void TestTransactionDao::aReleasedOverrideGivesTheAutomaticLevelBack()
{
    QVERIFY(addLedger());
    QVERIFY(TransactionDao().setManualOverride(3, std::nullopt, u" 撤销 "_s));
    QCOMPARE(row(u"SELECT risk_level, risk_manual_override, risk_manual_note FROM transactions "
                 "WHERE id = 3"_s),
        u"low|∅| 撤销 "_s);
}

void TestTransactionDao::reasonsAreReadFromAnyJson_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QStringList>("reasons");
    QTest::newRow("empty array") << u"'[]'"_s << QStringList();
    QTest::newRow("blank") << u"'  '"_s << QStringList();
    QTest::newRow("compact") << u"'[\"甲，乙\",\"丙\"]'"_s << QStringList { u"甲，乙"_s, u"丙"_s };
    QTest::newRow("blanks around") << u"' [\"甲\"] '"_s << QStringList { u"甲"_s };
    QTest::newRow("empty texts") << u"'[\"\",\"\"]'"_s << QStringList { u""_s, u""_s };
    QTest::newRow("blank after the comma")
        << u"'[\"甲\", \"乙\"]'"_s << QStringList { u"甲"_s, u"乙"_s };
    QTest::newRow("escaped quotes and commas")
        << u"'[\"甲\\\",\\\"乙\",\"丙\\\\\"]'"_s << QStringList { u"甲\",\"乙"_s, u"丙\\"_s };
    QTest::newRow("stray quote") << u"'[\"甲\"乙\"]'"_s << QStringList();
    QTest::newRow("one text left open") << u"'[\"甲\",\"]'"_s << QStringList();
    QTest::newRow("spread over lines")
        << u"' [\n \"甲\" ,\n \"\\u4e59\" ]\n'"_s << QStringList { u"甲"_s, u"乙"_s };
    QTest::newRow("broken") << u"'[\"甲\", '"_s << QStringList();
    QTest::newRow("no array") << u"'{\"a\": 1}'"_s << QStringList();
    QTest::newRow("not only texts")
        << u"'[\"甲\", 5, null]'"_s << QStringList { u"甲"_s, QString(), QString() };
    QTest::newRow("as bytes") << u"CAST('[\"甲\"]' AS BLOB)"_s << QStringList { u"甲"_s };
}

void TestTransactionDao::reasonsAreReadFromAnyJson()
{
    QFETCH(QString, stored);
    const qint64 id = add(entryOf(u"2025-01-01"_s, u"s"_s, Direction::In, 1));
    QCOMPARE(run({ u"UPDATE transactions SET risk_reasons = "_s + stored }), QString());
    QTEST(TransactionDao().findById(id)->riskReasons, "reasons");
}

void TestTransactionDao::aBrokenStatementKeepsItsReason()
{
    QCOMPARE(run({ u"ALTER TABLE transactions RENAME TO hidden"_s }), QString());
    TransactionDao dao;
    QTest::ignoreMessage(QtWarningMsg,
        "SQL error: no such table: transactions Unable to execute statement | "
        "SELECT * FROM transactions WHERE id = :id");
    QVERIFY(!dao.findById(1));
    QCOMPARE(dao.lastError(), u"no such table: transactions Unable to execute statement"_s);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^SQL error: no such table"_s));
    QVERIFY(dao.search({}).isEmpty());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^SQL error: no such table"_s));
    QCOMPARE(dao.projectTotals(1).count, qint64 { 0 });
}
