#include "core/AppPaths.h"
#include "db/TransactionDao.h"
#include "services/csv/CsvBytes.h"
#include "services/csv/CsvExport.h"
#include "services/VoucherSample.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QRegularExpression>

#include <limits>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(TransactionFilter)

namespace {

const QByteArray mark = "\xEF\xBB\xBF";
const QByteArray ledgerHeader
    = "ID,日期,摘要,方向,金额(元),本方账户,对方名称,对方账户,分类,关联项目,"
      "凭证数,风险等级,风险原因,备注\r\n";

QString targetPath()
{
    return AppPaths::exportsDir() + u"/导出.csv"_s;
}

// What the file holds after the export; the reason when it failed.
QByteArray ledgerOf(const QList<Transaction>& entries)
{
    const auto result = CsvExport::exportLedger(entries, targetPath());
    return result.ok ? TestFile::bytesOf(targetPath()) : result.message.toUtf8();
}

QByteArray reportOf(const CsvExport::Range& range, const QList<CategoryStat>& categories,
    const RiskLevelCounts& levels)
{
    const auto result = CsvExport::exportReport(range, categories, levels, targetPath());
    return result.ok ? TestFile::bytesOf(targetPath()) : result.message.toUtf8();
}

} // namespace

class TestCsvExport final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void theLedgerIsWrittenByteForByte();
    void aSearchIsWrittenLikeItsEntries_data();
    void aSearchIsWrittenLikeItsEntries();
    void aLedgerThatCannotBeReadWritesNothing();
    void entriesKeepTheirOrder();
    void everyLabelIsWritten_data();
    void everyLabelIsWritten();
    void fieldsAreQuotedWhenTheyMust_data();
    void fieldsAreQuotedWhenTheyMust();
    void aBrokenCharacterStaysInItsField();
    void theReportIsWrittenByteForByte();
    void anEmptyReportHasZeros();
    void sharesAddUpToAHundred();
    void anAbsurdTotalStopsAtTheLargestNumber();
    void rangesAreNamed_data();
    void rangesAreNamed();
    void aFailedExportKeepsTheOldFile();
    void aFullDiskKeepsTheOldFile();
    void fileNamesTellTheRange_data();
    void fileNamesTellTheRange();
};

void TestCsvExport::theLedgerIsWrittenByteForByte()
{
    QCOMPARE(
        TestDatabase::run({ u"INSERT INTO projects (id, name, code, client_name) VALUES (1, "
                            "'官网, 二期', 'P-1', '甲')"_s,
            u"INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
            "owner_account_type, counterparty_name, counterparty_account_type, category, "
            "project_id, note, risk_level, risk_auto_level, risk_reasons, risk_manual_override) "
            "VALUES ('2025-01-31', '收\"首\"款', 'in', 123456789, 'private', '乙公司', 'company', "
            "'business_income', 1, '第一行' || char(13, 10) || '第二行', 'high', 'low', "
            "'[\"原因一\",\"原因二\"]', 'high')"_s,
            u"INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
            "owner_account_type, counterparty_name, counterparty_account_type, category) VALUES "
            "('2025-02-01', '电费', 'out', 5, 'company', '供电局', 'unknown', 'other')"_s,
            u"INSERT INTO entity_links (source_type, source_id, target_type, target_id) VALUES "
            "('voucher', 1, 'transaction', 1), ('voucher', 2, 'transaction', 1)"_s }),
        QString());
    QCOMPARE(ledgerOf(TransactionDao().search({})),
        mark + ledgerHeader
            + "2,2025-02-01,电费,支出,0.05,对公账户,供电局,不明,其他,—,0,正常,,\r\n"
              "1,2025-01-31,\"收\"\"首\"\"款\",收入,1234567.89,股东私人账户,乙公司,对公账户,"
              "经营收入,"
              "\"官网, 二期\",2,高风险 *,原因一；原因二,\"第一行\r\n第二行\"\r\n");
}

void TestCsvExport::aSearchIsWrittenLikeItsEntries_data()
{
    QTest::addColumn<TransactionFilter>("filter");
    QTest::addColumn<qsizetype>("entries");
    const auto addRow = [](const char* name, const TransactionFilter& filter, qsizetype entries) {
        QTest::newRow(name) << filter << entries;
    };
    addRow("everything, damaged rows included", {}, 4);
    addRow("a range of days", { .dateFrom = QDate(2025, 1, 1), .dateTo = QDate(2025, 1, 31) }, 1);
    addRow("owner's account", { .owner = AccountType::Private }, 1);
    addRow("category", { .category = Category::TaxFee }, 1);
    addRow("level in force", { .risk = RiskLevel::High }, 1);
    addRow("project", { .projectId = 1 }, 1);
    addRow("keyword", { .keyword = u" _费 "_s }, 1);
    addRow("the newest two", { .limit = 2 }, 2);
    addRow("nothing found", { .keyword = u"没有"_s }, 0);
}

void TestCsvExport::aSearchIsWrittenLikeItsEntries()
{
    QFETCH(TransactionFilter, filter);
    QFETCH(qsizetype, entries);
    const QString insert
        = u"INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
          "owner_account_type, counterparty_name, counterparty_account_type, category, "
          "project_id, note, risk_level, risk_reasons, risk_manual_override) VALUES "_s;
    QCOMPARE(
        TestDatabase::run({ u"INSERT INTO projects (id, name, code, client_name) VALUES (1, "
                            "'官网, \"二期\"', 'P-1', '甲')"_s,
            insert
                + u"('2025-01-31', '收\"首\"款𠮷', 'in', 9000000000000000001, 'private', '乙,公司', "
                  "'company', 'business_income', 1, '第一行' || char(13, 10) || '第二行', 'high', "
                  "'[\"原因一\",\"原因, 二\"]', 'high')"_s,
            insert
                + u"('2025-02-01', '电费', 'out', 5, 'company', '供电局', 'unknown', 'tax_fee', "
                  "NULL, NULL, 'low', ' [\"一\\u4e8c\", \"三\"] ', NULL)"_s,
            u"PRAGMA ignore_check_constraints = ON"_s,
            insert
                + u"('2025-02-30', CAST(X'E794B5FF' AS TEXT), 'sideways', -7, 'other', 12.5, '', "
                  "'电', NULL, X'41', 'worst', '[1', 'worse')"_s,
            insert
                + u"('someday', '', 'in', 'much', 'company', '', 'private', 'other', NULL, "
                  "'', 'normal', '[]', NULL)"_s,
            u"PRAGMA ignore_check_constraints = OFF"_s,
            u"INSERT INTO entity_links (source_type, source_id, target_type, target_id) VALUES "
            "('voucher', 1, 'transaction', 1), ('voucher', 2, 'transaction', 1)"_s }),
        QString());
    const QList<Transaction> found = TransactionDao().search(filter);
    QCOMPARE(found.size(), entries);
    const auto result = CsvExport::exportSearch(filter, targetPath());
    QVERIFY2(result.ok, qUtf8Printable(result.message));
    QCOMPARE(result.entries, entries);
    const QByteArray bytes = TestFile::bytesOf(targetPath());
    QCOMPARE(bytes, ledgerOf(found));
    QVERIFY(bytes.isValidUtf8());
}

void TestCsvExport::aLedgerThatCannotBeReadWritesNothing()
{
    QCOMPARE(TestDatabase::run({ u"ALTER TABLE transactions RENAME TO away"_s }), QString());
    VoucherSample::expectWarnings({ u"SQL error: .*no such table"_s });
    const auto result = CsvExport::exportSearch({}, targetPath());
    QVERIFY(!result.ok);
    QVERIFY2(result.message.startsWith(u"流水读取失败："_s) && result.message.contains(u"no such"),
        qUtf8Printable(result.message));
    QVERIFY(QDir(AppPaths::exportsDir()).isEmpty());
}

void TestCsvExport::entriesKeepTheirOrder()
{
    QCOMPARE(ledgerOf({}), mark + ledgerHeader);
    QList<Transaction> entries;
    for (const qint64 id : QList<qint64> { 7, 9'000'000'000'000, 3 })
        entries.append({ .id = id, .transDate = QDate(2025, 1, 1), .amountFen = 100 });
    QByteArrayList ids;
    for (const QByteArray& line : ledgerOf(entries).split('\n'))
        ids += line.left(line.indexOf(','));
    QCOMPARE(ids, (QByteArrayList { mark + "ID", "7", "9000000000000", "3", "" }));
}

void TestCsvExport::everyLabelIsWritten_data()
{
    QTest::addColumn<Transaction>("entry");
    QTest::addColumn<QByteArray>("line");
    const auto addCategory = [](Category category, const QByteArray& label) {
        QTest::newRow(label.constData()) << Transaction { .category = category }
                                         << "0,,,收入,0.00,对公账户,,不明," + label + ",—,0,正常,,";
    };
    addCategory(Category::BusinessIncome, "经营收入");
    addCategory(Category::BusinessExpense, "经营采购/成本支出");
    addCategory(Category::Salary, "工资薪酬");
    addCategory(Category::ExpenseReimburse, "费用报销/归垫");
    addCategory(Category::ShareholderIn, "股东转入（借款/投资款）");
    addCategory(Category::ShareholderOut, "公司转付股东（借款/备用金/分红等）");
    addCategory(Category::TaxFee, "税费缴纳");
    addCategory(Category::Other, "其他");
    const auto addLevel = [](const char* name, const Transaction& entry, const QByteArray& label) {
        QTest::newRow(name) << entry << "0,,,收入,0.00,对公账户,,不明,其他,—,0," + label + ",,";
    };
    addLevel("warning", { .riskLevel = RiskLevel::Low }, "预警");
    addLevel("medium", { .riskLevel = RiskLevel::Medium }, "中风险");
    addLevel("high", { .riskLevel = RiskLevel::High }, "高风险");
    addLevel("set to normal by hand", { .riskManualOverride = RiskLevel::Normal }, "正常 *");
    QTest::newRow("a project without a name") << Transaction { .projectId
        = 4 } << QByteArray("0,,,收入,0.00,对公账户,,不明,其他,,0,正常,,");
    QTest::newRow("a private counterparty") << Transaction {
        .direction = Direction::Out, .counterpartyAccountType = AccountType::Private
    } << QByteArray("0,,,支出,0.00,对公账户,,股东私人账户,其他,—,0,正常,,");
}

void TestCsvExport::everyLabelIsWritten()
{
    QFETCH(Transaction, entry);
    QFETCH(QByteArray, line);
    QCOMPARE(ledgerOf({ entry }), mark + ledgerHeader + line + "\r\n");
}

void TestCsvExport::fieldsAreQuotedWhenTheyMust_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("plain") << u"电费 2025；第1期，全额"_s << QByteArray("电费 2025；第1期，全额");
    QTest::newRow("empty") << u""_s << QByteArray();
    QTest::newRow("comma") << u"a,b"_s << QByteArray("\"a,b\"");
    QTest::newRow("quote") << u"5\" 屏"_s << QByteArray("\"5\"\" 屏\"");
    QTest::newRow("quotes only") << u"\"\""_s << QByteArray("\"\"\"\"\"\"");
    QTest::newRow("line feed") << u"a\nb"_s << QByteArray("\"a\nb\"");
    QTest::newRow("carriage return at the end") << u"a\r"_s << QByteArray("\"a\r\"");
    QTest::newRow("blanks around") << u" a "_s << QByteArray(" a ");
    QTest::newRow("tab, apostrophe and semicolon") << u"\t'a';"_s << QByteArray("\t'a';");
    QTest::newRow("characters beyond the first plane") << u"𠮷😀"_s << QByteArray("𠮷😀");
}

void TestCsvExport::fieldsAreQuotedWhenTheyMust()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, field);
    const Transaction entry { .summary = text,
        .counterpartyName = text,
        .projectId = 1,
        .note = text,
        .riskReasons = { text, u"x"_s },
        .projectName = text };
    const QByteArray joined = field.startsWith('"') ? field.chopped(1) + "；x\"" : field + "；x";
    QCOMPARE(ledgerOf({ entry }),
        mark + ledgerHeader + "0,," + field + ",收入,0.00,对公账户," + field + ",不明,其他," + field
            + ",0,正常," + joined + ',' + field + "\r\n");
}

void TestCsvExport::aBrokenCharacterStaysInItsField()
{
    CsvBytes csv;
    csv.field(QStringView(u"\xD842")).field(QStringView(u"\xDFB7")).field(u"后").endLine();
    const QByteArrayList fields = csv.bytes().chopped(2).split(',');
    QCOMPARE(fields.size(), 3);
    QVERIFY(!fields.contains("𠮷"));
    QCOMPARE(fields.last(), QByteArray("后"));
}

void TestCsvExport::theReportIsWrittenByteForByte()
{
    const QList<CategoryStat> categories { { Category::ShareholderOut, 2, 0, 12'345'600 },
        { Category::BusinessIncome, 3, 1'000'050, 0 }, { Category::Other, 1, 5, 7 } };
    QCOMPARE(reportOf({ QDate(2025, 1, 1), QDate(2025, 12, 31) }, categories,
                 { .high = 1, .medium = 2, .low = 0, .normal = 3 }),
        mark
            + "统计报表（2025-01-01 至 2025-12-31）\r\n"
              "\r\n"
              "分类汇总\r\n"
              "分类,笔数,收入(元),支出(元),净额(元)\r\n"
              "公司转付股东（借款/备用金/分红等）,2,0.00,123456.00,-123456.00\r\n"
              "经营收入,3,10000.50,0.00,10000.50\r\n"
              "其他,1,0.05,0.07,-0.02\r\n"
              "合计,6,10000.55,123456.07,-113455.52\r\n"
              "\r\n"
              "风险分布\r\n"
              "风险等级,笔数,占比\r\n"
              "高风险,1,16.7%\r\n"
              "中风险,2,33.3%\r\n"
              "预警,0,0.0%\r\n"
              "正常,3,50.0%\r\n");
}

void TestCsvExport::anEmptyReportHasZeros()
{
    const QByteArray report = reportOf({}, {}, {});
    QVERIFY(report.contains("\r\n合计,0,0.00,0.00,0.00\r\n"));
    QVERIFY(report.endsWith("高风险,0,0.0%\r\n中风险,0,0.0%\r\n预警,0,0.0%\r\n正常,0,0.0%\r\n"));
}

void TestCsvExport::sharesAddUpToAHundred()
{
    const QByteArray report = reportOf({}, {}, { .high = 1, .medium = 1, .low = 1, .normal = 0 });
    QVERIFY2(report.endsWith("高风险,1,33.4%\r\n中风险,1,33.3%\r\n预警,1,33.3%\r\n正常,0,0.0%\r\n"),
        report.constData());
}

void TestCsvExport::anAbsurdTotalStopsAtTheLargestNumber()
{
    const qint64 largest = std::numeric_limits<qint64>::max();
    const QByteArray report = reportOf(
        {}, { { Category::BusinessIncome, 1, largest, 0 }, { Category::Other, 1, 100, 0 } }, {});
    QVERIFY2(report.contains("\r\n合计,2,92233720368547758.07,0.00,92233720368547758.07\r\n"),
        report.constData());
}

void TestCsvExport::rangesAreNamed_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    QTest::addColumn<QByteArray>("title");
    const QDate day(2025, 3, 9);
    QTest::newRow("open") << QDate() << QDate() << QByteArray("统计报表（不限）");
    QTest::newRow("one day") << day << day << QByteArray("统计报表（2025-03-09 至 2025-03-09）");
    QTest::newRow("no end") << day << QDate() << QByteArray("统计报表（2025-03-09 至 不限）");
    QTest::newRow("no start") << QDate() << day << QByteArray("统计报表（不限 至 2025-03-09）");
}

void TestCsvExport::rangesAreNamed()
{
    QFETCH(QDate, from);
    QFETCH(QDate, to);
    QFETCH(QByteArray, title);
    QVERIFY(reportOf({ from, to }, {}, {}).startsWith(mark + title + "\r\n\r\n"));
}

void TestCsvExport::aFailedExportKeepsTheOldFile()
{
    VoucherSample::expectWarnings(
        { u"CSV export to .* failed: "_s, u"CSV export to .* failed: "_s });
    const QString folder = AppPaths::exportsDir();
    const auto ledger = CsvExport::exportLedger({}, folder);
    QVERIFY(!ledger.ok);
    QCOMPARE(ledger.message,
        u"文件无法写入（磁盘空间不足、没有权限或被其他程序占用）："_s
            + QDir::toNativeSeparators(folder));
    QVERIFY(!CsvExport::exportReport({}, {}, {}, folder + u"/missing/a.csv"_s).ok);
    QVERIFY(QDir(folder).isEmpty());
}

void TestCsvExport::aFullDiskKeepsTheOldFile()
{
#ifdef Q_OS_UNIX
    QVERIFY(CsvExport::exportLedger({ {} }, targetPath()).ok);
    const QByteArray before = TestFile::bytesOf(targetPath());
    const QList<Transaction> many(1000);
    VoucherSample::expectWarnings({ u"CSV export to .* failed: "_s });
    CsvExport::Result result;
    {
        const VoucherSample::FullDisk disk(4096);
        result = CsvExport::exportLedger(many, targetPath());
    }
    QVERIFY(!result.ok && !result.message.isEmpty());
    QCOMPARE(TestFile::bytesOf(targetPath()), before);
    QCOMPARE(QDir(AppPaths::exportsDir()).entryList(QDir::Files | QDir::Hidden).size(), 1);
#endif
}

void TestCsvExport::fileNamesTellTheRange_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    QTest::addColumn<QString>("ledger");
    QTest::addColumn<QString>("report");
    const QDate from(2025, 1, 1);
    const QDate to(2025, 12, 31);
    QTest::newRow("both") << from << to << u"资金流水_20250101_20251231_20260102030405.csv"_s
                          << u"统计报表_20250101_20251231_20260102_030405.csv"_s;
    QTest::newRow("none") << QDate() << QDate() << u"资金流水_起_止_20260102030405.csv"_s
                          << u"统计报表_起_止_20260102_030405.csv"_s;
    QTest::newRow("start only") << from << QDate() << u"资金流水_20250101_止_20260102030405.csv"_s
                                << u"统计报表_20250101_止_20260102_030405.csv"_s;
}

void TestCsvExport::fileNamesTellTheRange()
{
    QFETCH(QDate, from);
    QFETCH(QDate, to);
    const QDateTime now(QDate(2026, 1, 2), QTime(3, 4, 5));
    QTEST(CsvExport::ledgerFileName({ .dateFrom = from, .dateTo = to }, now), "ledger");
    QTEST(CsvExport::reportFileName({ from, to }, now), "report");
    const QRegularExpression form(u"^资金流水_起_止_\\d{14}\\.csv$"_s);
    QVERIFY(form.match(CsvExport::ledgerFileName({})).hasMatch());
}

QTEST_GUILESS_MAIN(TestCsvExport)
#include "TestCsvExport.moc"
