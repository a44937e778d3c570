// The ledger as CSV, search included, beside SQLite's C interface writing the same bytes.

#include "core/AppPaths.h"
#include "services/csv/CsvExport.h"
#include "support/BenchLedger.h"
#include "support/BenchRun.h"
#include "support/PairedTiming.h"
#include "support/RawDatabase.h"

#include <QCoreApplication>
#include <QFile>

#include <array>
#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto statement
    = "SELECT t.*, p.name AS x_project_name,  (SELECT COUNT(*) FROM entity_links l    WHERE "
      "l.source_type = 'voucher' AND l.target_type = 'transaction'      AND l.target_id = t.id) AS "
      "x_voucher_count FROM transactions t LEFT JOIN projects p ON p.id = t.project_id WHERE 1=1 "
      "ORDER BY t.trans_date DESC, t.id DESC";

struct Label {
    std::string_view code;
    std::string_view text;
};
constexpr auto labels = std::to_array<Label>({
    { "in", "收入" },
    { "out", "支出" },
    { "company", "对公账户" },
    { "private", "股东私人账户" },
    { "unknown", "不明" },
    { "business_income", "经营收入" },
    { "business_expense", "经营采购/成本支出" },
    { "salary", "工资薪酬" },
    { "expense_reimburse", "费用报销/归垫" },
    { "shareholder_in", "股东转入（借款/投资款）" },
    { "shareholder_out", "公司转付股东（借款/备用金/分红等）" },
    { "tax_fee", "税费缴纳" },
    { "other", "其他" },
    { "high", "高风险" },
    { "medium", "中风险" },
    { "low", "预警" },
    { "normal", "正常" },
});

class RawCsv final {
public:
    explicit RawCsv(RawDatabase& database)
        : m_rows(database, statement)
    {
    }

    const std::string& build()
    {
        m_bytes = "\xEF\xBB\xBFID,日期,摘要,方向,金额(元),本方账户,对方名称,对方账户,分类,关联项目,"
                  "凭证数,风险等级,风险原因,备注\r\n";
        while (m_rows.next())
            addEntry();
        return m_bytes;
    }

private:
    std::string_view cell(int column) const
    {
        const QByteArrayView bytes = m_rows.bytes(column);
        return { bytes.data(), static_cast<std::size_t>(bytes.size()) };
    }

    void addEntry()
    {
        m_bytes += cell(0);
        addText(cell(1));
        addText(cell(2));
        addLabel(cell(3));
        addAmount(m_rows.number(4));
        addLabel(cell(5));
        addText(cell(6));
        addLabel(cell(7));
        addLabel(cell(8));
        addText(m_rows.isNull(9) ? "—" : cell(19));
        m_bytes += ',';
        m_bytes += cell(20);
        addLabel(cell(11));
        if (!m_rows.isNull(14))
            m_bytes += " *";
        addText(reasons());
        addText(cell(10));
        m_bytes += "\r\n";
    }

    void addText(std::string_view text)
    {
        m_bytes += ',';
        if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
            m_bytes += text;
            return;
        }
        m_bytes += '"';
        for (const char c : text)
            m_bytes.append(c == '"' ? 2 : 1, c);
        m_bytes += '"';
    }

    void addLabel(std::string_view code)
    {
        m_bytes += ',';
        for (const Label& label : labels) {
            if (label.code == code) {
                m_bytes += label.text;
                return;
            }
        }
    }

    void addAmount(qint64 fen)
    {
        std::array<char, 24> text;
        char* const end = std::to_chars(text.data(), text.data() + 20, fen / 100).ptr;
        end[0] = '.';
        end[1] = static_cast<char>('0' + fen / 10 % 10);
        end[2] = static_cast<char>('0' + fen % 10);
        m_bytes += ',';
        m_bytes.append(text.data(), end + 3);
    }

    // The reasons are plain texts: between quotes, with nothing escaped.
    std::string reasons() const
    {
        std::string text(cell(13));
        if (text.size() < 4)
            return {};
        text = text.substr(2, text.size() - 4);
        for (auto at = text.find("\",\""); at != std::string::npos; at = text.find("\",\""))
            text.replace(at, 3, "；");
        return text;
    }

    RawStatement m_rows;
    std::string m_bytes;
};

void require(bool done, const char* what)
{
    if (!done)
        qFatal("The raw side failed: %s", what);
}

// Beside and renamed, on the disk before it is called done, as our own side does.
void writeRaw(RawDatabase& database, const QByteArray& path)
{
    RawCsv csv(database);
    const std::string& bytes = csv.build();
    const QByteArray beside = path + ".part";
    std::FILE* const file = std::fopen(beside.constData(), "wb");
    require(file != nullptr, "open");
    require(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(), "write");
    require(std::fflush(file) == 0 && ::fdatasync(::fileno(file)) == 0, "sync");
    std::fclose(file);
    require(std::rename(beside.constData(), path.constData()) == 0, "rename");
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void exportLedger(benchmark::State& state)
{
    BenchLedger::use(static_cast<int>(state.range(0)));
    RawDatabase database(AppPaths::databasePath());
    const QString ourPath = AppPaths::exportsDir() + u"/ours.csv"_s;
    const QString rawPath = AppPaths::exportsDir() + u"/raw.csv"_s;
    const QByteArray rawPathBytes = rawPath.toLocal8Bit();
    measurePair(
        state,
        [&] {
            if (!CsvExport::exportSearch({}, ourPath).ok)
                qFatal("The export failed");
        },
        [&] { writeRaw(database, rawPathBytes); });
    state.counters["bytes"] = static_cast<double>(contentOf(ourPath).size());
    if (contentOf(ourPath) != contentOf(rawPath))
        state.SkipWithError("the two sides do not write the same");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    BenchRun::keepQuiet();
    for (const int size : { 1'000, 10'000, 100'000 })
        benchmark::RegisterBenchmark("export_ledger", exportLedger)
            ->Arg(size)
            ->Iterations(size < 100'000 ? 31 : 11)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    const int status = BenchRun::runAll(argc, argv);
    BenchLedger::close();
    return status;
}
