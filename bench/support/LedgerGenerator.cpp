#include "support/LedgerGenerator.h"

#include "core/Codes.h"
#include "core/TextRules.h"
#include "support/RawDatabase.h"

#include <array>
#include <random>

namespace LedgerGenerator {

namespace {

constexpr int projectCount = 40;
constexpr int documentCount = 60;
constexpr int days = 3652;

// How a hundred entries of a small company are spread over the categories.
struct Share {
    const char* category;
    const char* direction;
    const char* summary;
    int percent;
};
constexpr std::array shares { Share { "business_income", "in", "品牌设计项目阶段款", 38 },
    Share { "business_expense", "out", "采购打样与印刷材料", 26 },
    Share { "salary", "out", "发放设计师工资", 9 },
    Share { "expense_reimburse", "out", "报销差旅与办公用品", 6 },
    Share { "shareholder_in", "in", "股东借款转入公司", 7 },
    Share { "shareholder_out", "out", "归还股东借款", 7 },
    Share { "tax_fee", "out", "缴纳增值税及附加", 5 }, Share { "other", "in", "银行存款利息", 2 } };

// Not std::uniform_int_distribution: its results differ between libraries.
int pick(std::mt19937& random, int below)
{
    return static_cast<int>(random() % static_cast<unsigned>(below));
}

const Share& pickShare(std::mt19937& random)
{
    int rest = pick(random, 100);
    for (const Share& share : shares) {
        if ((rest -= share.percent) < 0)
            return share;
    }
    return shares.back();
}

void addProjects(RawDatabase& database)
{
    RawStatement insert(
        database, "INSERT INTO projects (name, code, client_name) VALUES (?, ?, '客户')");
    for (int i = 1; i <= projectCount; ++i) {
        const QByteArray name = "设计项目" + QByteArray::number(i);
        const QByteArray code = "P-2026-" + QByteArray::number(i);
        insert.bind(1, name);
        insert.bind(2, code);
        insert.next();
        insert.reset();
    }
}

void addDocuments(RawDatabase& database)
{
    RawStatement insert(database,
        "INSERT INTO documents (doc_type, doc_no, title, doc_year, doc_date, fund_direction, "
        "content_html, file_path) VALUES ('fund_decision', ?, '公私资金往来决定书', 2025, "
        "'2025-06-30', 'out', '', '')");
    for (int i = 1; i <= documentCount; ++i) {
        const QByteArray number = "KYR-FD-2025-" + QByteArray::number(i);
        insert.bind(1, number);
        insert.next();
        insert.reset();
    }
}

class EntryWriter final {
public:
    explicit EntryWriter(RawDatabase& database)
        : m_entry(database,
            "INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
            "owner_account_type, counterparty_name, counterparty_account_type, category, "
            "project_id, note) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
        , m_link(database,
              "INSERT INTO entity_links (source_type, source_id, target_type, target_id) VALUES "
              "(?, ?, 'transaction', ?)")
    {
    }

    void add(std::mt19937& random, qint64 id)
    {
        const Share& share = pickShare(random);
        const QByteArray date
            = TextRules::dateText(QDate(2016, 1, 1).addDays(pick(random, days))).toUtf8();
        const QByteArray number = QByteArray::number(id % 97);
        const QByteArray texts[] = { date, share.summary + number, share.direction,
            pick(random, 20) == 0 ? "private" : "company", "杭州合作单位" + number,
            pick(random, 4) == 0 ? "private" : "company", share.category };
        m_entry.bind(1, texts[0]);
        m_entry.bind(2, texts[1]);
        m_entry.bind(3, texts[2]);
        m_entry.bind(4, 100 + pick(random, 9'000'000));
        m_entry.bind(5, texts[3]);
        m_entry.bind(6, texts[4]);
        m_entry.bind(7, texts[5]);
        m_entry.bind(8, texts[6]);
        bindOptional(random);
        m_entry.next();
        m_entry.reset();
        addLinks(random, id, texts[6]);
    }

private:
    void bindOptional(std::mt19937& random)
    {
        static const QByteArray note = "合同约定的阶段款，附回单";
        if (pick(random, 2) == 0)
            m_entry.bind(9, 1 + pick(random, projectCount));
        else
            m_entry.bindNull(9);
        if (pick(random, 3) == 0)
            m_entry.bind(10, note);
        else
            m_entry.bindNull(10);
    }

    void addLinks(std::mt19937& random, qint64 id, const QByteArray& category)
    {
        const bool isOwnersTransfer = category.startsWith("shareholder");
        if (pick(random, 2) == 0)
            link("voucher", id, id);
        if (isOwnersTransfer && pick(random, 3) == 0)
            link("document", 1 + pick(random, documentCount), id);
    }

    void link(const QByteArray& source, qint64 sourceId, qint64 id)
    {
        m_link.bind(1, source);
        m_link.bind(2, sourceId);
        m_link.bind(3, id);
        m_link.next();
        m_link.reset();
    }

    RawStatement m_entry;
    RawStatement m_link;
};

} // namespace

void fill(const QString& databasePath, int entries)
{
    RawDatabase database(databasePath);
    std::mt19937 random(20260101);
    database.run("BEGIN");
    addProjects(database);
    addDocuments(database);
    EntryWriter writer(database);
    for (int id = 1; id <= entries; ++id)
        writer.add(random, id);
    database.run("COMMIT");
}

} // namespace LedgerGenerator
