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

using namespace Qt::StringLiterals;

namespace {

const QByteArray mark = "\xEF\xBB\xBF";
const QByteArray ledgerHeader
    = "ID,日期,摘要,方向,金额(元),本方账户,对方名称,对方账户,分类,关联项目,"
      "凭证数,风险等级,风险原因,备注\r\n";

const QString insertEntry
    = u"INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
      "owner_account_type, counterparty_name, counterparty_account_type, category, "
      "project_id, note, risk_level, risk_reasons, risk_manual_override) VALUES "_s;

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
    void theLedgerIsWrittenByteForByte()
    {
        QCOMPARE(
            TestDatabase::run({ u"INSERT INTO projects (id, name, code, client_name) VALUES (1, "
                                "'官网, 二期', 'P-1', '甲')"_s,
                insertEntry
                    + u"('2025-01-31', '收\"首\"款', 'in', 123456789, 'private', '乙公司', "
                      "'company', 'business_income', 1, '第一行' || char(13, 10) || '第二行', "
                      "'high', '[\"原因一\",\"原因二\"]', 'high')"_s,
                insertEntry
                    + u"('2025-02-01', '电费', 'out', 5, 'company', '供电局', 'unknown', 'other', "
                      "NULL, NULL, 'normal', NULL, NULL)"_s,
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

    void aSearchIsWrittenLikeItsEntries()
    {

        QCOMPARE(
            TestDatabase::run({ u"INSERT INTO projects (id, name, code, client_name) VALUES (1, "
                                "'官网, \"二期\"', 'P-1', '甲')"_s,
                insertEntry
                    + u"('2025-01-31', '收\"首\"款𠮷', 'in', 9000000000000000001, 'private', '乙,公司', "
                      "'company', 'business_income', 1, '第一行' || char(13, 10) || '第二行', 'high', "
                      "'[\"原因一\",\"原因, 二\"]', 'high')"_s,
                insertEntry
                    + u"('2025-02-01', '电费', 'out', 5, 'company', '供电局', 'unknown', 'tax_fee', "
                      "NULL, NULL, 'low', ' [\"一\\u4e8c\", \"三\"] ', NULL)"_s,
                u"PRAGMA ignore_check_constraints = ON"_s,
                insertEntry
                    + u"('2025-02-30', CAST(X'E794B5FF' AS TEXT), 'sideways', -7, 'other', 12.5, '', "
                      "'电', NULL, X'41', 'worst', '[1', 'worse')"_s,
                insertEntry
                    + u"('someday', '', 'in', 'much', 'company', '', 'private', 'other', NULL, "
                      "'', 'normal', '[]', NULL)"_s,
                u"PRAGMA ignore_check_constraints = OFF"_s,
                u"INSERT INTO entity_links (source_type, source_id, target_type, target_id) VALUES "
                "('voucher', 1, 'transaction', 1), ('voucher', 2, 'transaction', 1)"_s }),
            QString());
        const TransactionFilter filled { .dateFrom = QDate(2025, 1, 1),
            .dateTo = QDate(2025, 1, 31),
            .owner = AccountType::Private,
            .category = Category::BusinessIncome,
            .risk = RiskLevel::High,
            .projectId = 1 };
        const QList<std::pair<TransactionFilter, qsizetype>> searches { { {}, 4 }, { filled, 1 },
            { { .keyword = u" _费 "_s }, 1 }, { { .limit = 2 }, 2 },
            { { .keyword = u"没有"_s }, 0 } };
        for (const auto& [filter, entries] : searches) {
            const QList<Transaction> found = TransactionDao().search(filter);
            QCOMPARE(found.size(), entries);
            const auto result = CsvExport::exportSearch(filter, targetPath());
            QVERIFY2(result.ok, qUtf8Printable(result.message));
            QCOMPARE(result.entries, entries);
            const QByteArray bytes = TestFile::bytesOf(targetPath());
            QCOMPARE(bytes, ledgerOf(found));
            QVERIFY(bytes.isValidUtf8());
        }
    }

    void aLedgerThatCannotBeReadWritesNothing()
    {
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE transactions RENAME TO away"_s }), QString());
        VoucherSample::expectWarnings({ u"SQL error: .*no such table"_s });
        const auto result = CsvExport::exportSearch({}, targetPath());
        QVERIFY(!result.ok);
        QVERIFY2(
            result.message.startsWith(u"流水读取失败："_s) && result.message.contains(u"no such"),
            qUtf8Printable(result.message));
        QVERIFY(QDir(AppPaths::exportsDir()).isEmpty());
    }

    void everyLabelIsWritten()
    {
        QByteArray lines = mark + ledgerHeader;
        QList<Transaction> entries;
        const auto add = [&](const Transaction& entry, const QByteArray& line) {
            entries += entry;
            lines += "0,,," + line + ",,\r\n";
        };
        for (const Category category : allValues<Category>())
            add({ .category = category },
                "收入,0.00,对公账户,,不明," + labelOf(category).toUtf8() + ",—,0,正常");
        const QByteArray other = "收入,0.00,对公账户,,不明,其他,";
        add({ .riskLevel = RiskLevel::Low }, other + "—,0,预警");
        add({ .riskLevel = RiskLevel::Medium }, other + "—,0,中风险");
        add({ .riskLevel = RiskLevel::High }, other + "—,0,高风险");
        add({ .riskManualOverride = RiskLevel::Normal }, other + "—,0,正常 *");
        add({ .projectId = 4 }, other + ",0,正常"); // of a name that is empty
        add({ .direction = Direction::Out, .counterpartyAccountType = AccountType::Private },
            "支出,0.00,对公账户,,股东私人账户,其他,—,0,正常");
        QCOMPARE(ledgerOf(entries), lines);
    }

    void fieldsAreQuotedWhenTheyMust_data()
    {
        addColumns<QString, QByteArray>("text", "field");
        const auto row = [](const char* name, const QString& text, const QByteArray& field) {
            addCase(name, text, field);
        };
        row("plain", u"电费 2025；第1期，全额"_s, "电费 2025；第1期，全额");
        row("empty", u""_s, "");
        row("comma", u"a,b"_s, "\"a,b\"");
        row("quote", u"5\" 屏"_s, "\"5\"\" 屏\"");
        row("quotes only", u"\"\""_s, R"("""""")");
        row("line feed", u"a\nb"_s, "\"a\nb\"");
        row("carriage return at the end", u"a\r"_s, "\"a\r\"");
        row("blanks around", u" a "_s, " a ");
        row("tab, apostrophe and semicolon", u"\t'a';"_s, "\t'a';");
        row("characters beyond the first plane", u"𠮷😀"_s, "𠮷😀");
    }

    void fieldsAreQuotedWhenTheyMust()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, field);
        const Transaction entry { .summary = text,
            .counterpartyName = text,
            .projectId = 1,
            .note = text,
            .riskReasons = { text, u"x"_s },
            .projectName = text };
        const QByteArray joined
            = field.startsWith('"') ? field.chopped(1) + "；x\"" : field + "；x";
        QCOMPARE(ledgerOf({ entry }),
            mark + ledgerHeader + "0,," + field + ",收入,0.00,对公账户," + field + ",不明,其他,"
                + field + ",0,正常," + joined + ',' + field + "\r\n");
    }

    void aBrokenCharacterStaysInItsField()
    {
        CsvBytes csv;
        csv.field(QStringView(u"\xD842")).field(QStringView(u"\xDFB7")).field(u"后").endLine();
        const QByteArrayList fields = csv.bytes().chopped(2).split(',');
        QCOMPARE(fields.size(), 3);
        QVERIFY(!fields.contains("𠮷"));
        QCOMPARE(fields.last(), QByteArray("后"));
    }

    void theReportIsWrittenByteForByte()
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

    void aFailedExportKeepsTheOldFile()
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

    void aFullDiskKeepsTheOldFile()
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

    void anEmptyReportHasZeros()
    {
        const QByteArray report = reportOf({}, {}, {});
        QVERIFY(report.contains("\r\n合计,0,0.00,0.00,0.00\r\n"));
        QVERIFY(
            report.endsWith("高风险,0,0.0%\r\n中风险,0,0.0%\r\n预警,0,0.0%\r\n正常,0,0.0%\r\n"));
    }

    void rangesAreNamed()
    {
        const auto titleOf = [](QDate from, QDate to) {
            return QString::fromUtf8(reportOf({ from, to }, {}, {}).sliced(mark.size()))
                .section(u"\r\n\r\n"_s, 0, 0);
        };
        const QDate day(2025, 3, 9);
        QCOMPARE(titleOf({}, {}), u"统计报表（不限）"_s);
        QCOMPARE(titleOf(day, day), u"统计报表（2025-03-09 至 2025-03-09）"_s);
        QCOMPARE(titleOf(day, {}), u"统计报表（2025-03-09 至 不限）"_s);
        QCOMPARE(titleOf({}, day), u"统计报表（不限 至 2025-03-09）"_s);
    }

    void fileNamesTellTheRange()
    {
        const QDateTime now(QDate(2026, 1, 2), QTime(3, 4, 5));
        const auto both = [&now](QDate from, QDate to) {
            return CsvExport::ledgerFileName({ .dateFrom = from, .dateTo = to }, now) + u' '
                + CsvExport::reportFileName({ from, to }, now);
        };
        const QDate from(2025, 1, 1);
        QCOMPARE(both(from, { 2025, 12, 31 }),
            u"资金流水_20250101_20251231_20260102030405.csv "
            "统计报表_20250101_20251231_20260102_030405.csv"_s);
        QCOMPARE(both({}, {}),
            u"资金流水_起_止_20260102030405.csv 统计报表_起_止_20260102_030405.csv"_s);
        QCOMPARE(both(from, {}),
            u"资金流水_20250101_止_20260102030405.csv "
            "统计报表_20250101_止_20260102_030405.csv"_s);
        const QRegularExpression form(u"^资金流水_起_止_\\d{14}\\.csv$"_s);
        QVERIFY(form.match(CsvExport::ledgerFileName({})).hasMatch());
    }
};

static const RegisteredTest<TestCsvExport> registered;

#include "TestCsvExport.moc"
