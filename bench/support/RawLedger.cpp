#include "support/RawLedger.h"

#include "core/TextRules.h"
#include "services/risk/RiskRules.h"

namespace {

// The columns of the ledger's statement, in the order of the schema.
enum LedgerColumn {
    Id,
    TransDate,
    Summary,
    DirectionCode,
    AmountFen,
    OwnerAccount,
    CounterpartyName,
    CounterpartyAccount,
    CategoryCode,
    ProjectId,
    Note,
    Risk,
    AutoRiskLevel,
    Reasons,
    Override,
    ManualNote,
    EvaluatedAt,
    CreatedAt,
    UpdatedAt,
    ProjectName,
    VoucherCount,
};

#define LEDGER_STATEMENT                                                                           \
    "SELECT t.*, p.name AS x_project_name,  (SELECT COUNT(*) FROM entity_links l    WHERE "        \
    "l.source_type = 'voucher' AND l.target_type = 'transaction'      AND l.target_id = t.id) AS " \
    "x_voucher_count FROM transactions t LEFT JOIN projects p ON p.id = t.project_id WHERE 1=1"

constexpr auto allEntries = LEDGER_STATEMENT " ORDER BY t.trans_date DESC, t.id DESC";
constexpr auto entriesWithKeyword = LEDGER_STATEMENT
    " AND (t.summary LIKE :kw OR t.counterparty_name LIKE :kw) ORDER BY t.trans_date DESC, t.id "
    "DESC";

#undef LEDGER_STATEMENT

template <typename Enum> Enum codeIn(const RawStatement& row, int column)
{
    const QByteArrayView code = row.bytes(column);
    for (const auto& candidate : codeTable<Enum>) {
        if (QtPrivate::compareStrings(
                QLatin1StringView(code.data(), code.size()), candidate.code, Qt::CaseSensitive)
            == 0)
            return candidate.value;
    }
    return codeFallback<Enum>;
}

// The reasons are plain texts: between quotes, with nothing escaped.
QStringList reasonsIn(QByteArrayView json)
{
    QStringList reasons;
    const char* const end = json.data() + json.size();
    for (const char* from = std::find(json.data(), end, '"'); from != end;) {
        const char* const to = std::find(from + 1, end, '"');
        reasons += QString::fromUtf8(from + 1, to - from - 1);
        from = std::find(to + 1, end, '"');
    }
    return reasons;
}

void readEntry(const RawStatement& row, Transaction& entry)
{
    entry.id = row.number(Id);
    entry.transDate = row.date(TransDate);
    entry.summary = row.text(Summary);
    entry.direction = codeIn<Direction>(row, DirectionCode);
    entry.amountFen = row.number(AmountFen);
    entry.ownerAccountType = codeIn<AccountType>(row, OwnerAccount);
    entry.counterpartyName = row.text(CounterpartyName);
    entry.counterpartyAccountType = codeIn<AccountType>(row, CounterpartyAccount);
    entry.category = codeIn<Category>(row, CategoryCode);
    if (!row.isNull(ProjectId))
        entry.projectId = row.number(ProjectId);
    entry.note = row.text(Note);
    entry.riskLevel = codeIn<RiskLevel>(row, Risk);
    entry.riskAutoLevel = codeIn<RiskLevel>(row, AutoRiskLevel);
    if (!row.isNull(Reasons))
        entry.riskReasons = reasonsIn(row.bytes(Reasons));
    if (!row.isNull(Override))
        entry.riskManualOverride = codeIn<RiskLevel>(row, Override);
    entry.riskManualNote = row.text(ManualNote);
    entry.riskEvaluatedAt = row.text(EvaluatedAt);
    entry.createdAt = row.text(CreatedAt);
    entry.updatedAt = row.text(UpdatedAt);
    entry.projectName = row.text(ProjectName);
    entry.voucherCount = static_cast<int>(row.number(VoucherCount));
}

QList<RiskRules::Flow> flowsIn(RawDatabase& database)
{
    RawStatement rows(database,
        "SELECT * FROM transactions WHERE category IN "
        "('shareholder_in','shareholder_out','expense_reimburse') ORDER BY trans_date ASC, id ASC");
    QList<RiskRules::Flow> flows;
    while (rows.next())
        flows.append({ rows.number(Id), rows.date(TransDate) });
    return flows;
}

QSet<qint64> coveredIn(RawDatabase& database)
{
    RawStatement rows(database,
        "SELECT DISTINCT el.target_id FROM entity_links el JOIN documents d ON d.id = el.source_id "
        "WHERE el.source_type = 'document' AND el.target_type = 'transaction' AND d.doc_type = "
        "'fund_decision'");
    QSet<qint64> covered;
    while (rows.next())
        covered.insert(rows.number(0));
    return covered;
}

struct Result {
    qint64 id;
    RiskRules::RiskResult risk;
};

std::vector<Result> evaluateAll(RawDatabase& database, const QHash<qint64, int>& flagged)
{
    RawStatement rows(database, allEntries);
    std::vector<Result> results;
    while (rows.next()) {
        Transaction entry;
        entry.id = rows.number(Id);
        entry.direction = codeIn<Direction>(rows, DirectionCode);
        entry.amountFen = rows.number(AmountFen);
        entry.ownerAccountType = codeIn<AccountType>(rows, OwnerAccount);
        entry.category = codeIn<Category>(rows, CategoryCode);
        entry.note = rows.text(Note);
        const int groupSize = flagged.value(entry.id, 0);
        results.push_back({ entry.id,
            RiskRules::evaluate(entry,
                { .voucherCount = static_cast<int>(rows.number(VoucherCount)),
                    .inFrequentGroup = groupSize > 0,
                    .groupSize = groupSize,
                    .largeAmountFen = 5'000'000,
                    .windowDays = 30 }) });
    }
    return results;
}

QByteArray jsonOf(const QStringList& reasons)
{
    QByteArray json = "[";
    for (const QString& reason : reasons) {
        json += json.size() > 1 ? ",\"" : "\"";
        json += reason.toUtf8();
        json += '"';
    }
    return json + ']';
}

void write(RawDatabase& database, const std::vector<Result>& results)
{
    RawStatement update(database,
        "UPDATE transactions SET risk_auto_level = :auto_level, risk_reasons = :reasons, "
        "risk_evaluated_at = :evaluated, risk_level = CASE WHEN risk_manual_override IS NULL THEN "
        ":auto_level                   ELSE risk_manual_override END WHERE id = :id");
    const QByteArray codes[] = { "high", "medium", "low", "normal" };
    const QByteArray now = TextRules::currentTimestamp().toUtf8();
    update.bind(3, now);
    for (const Result& result : results) {
        const QByteArray json = jsonOf(result.risk.reasons);
        update.bind(1, codes[static_cast<int>(result.risk.level)]);
        if (result.risk.reasons.isEmpty())
            update.bindNull(2);
        else
            update.bind(2, json);
        update.bind(4, result.id);
        update.next();
        update.reset();
    }
}

} // namespace

std::vector<Transaction> RawLedger::search(const QByteArray& keyword)
{
    RawStatement rows(m_database, keyword.isEmpty() ? allEntries : entriesWithKeyword);
    const QByteArray pattern = '%' + keyword + '%';
    if (!keyword.isEmpty())
        rows.bind(1, pattern);
    std::vector<Transaction> entries;
    while (rows.next())
        readEntry(rows, entries.emplace_back());
    return entries;
}

std::vector<CategoryStat> RawLedger::categoryStats()
{
    RawStatement rows(m_database,
        "SELECT category, COUNT(*) AS cnt, COALESCE(SUM(CASE WHEN direction='in' THEN amount_fen "
        "ELSE 0 END),0) AS income_fen, COALESCE(SUM(CASE WHEN direction='out' THEN amount_fen "
        "ELSE 0 END),0) AS expense_fen FROM transactions WHERE 1=1 GROUP BY category ORDER BY "
        "income_fen + expense_fen DESC");
    std::vector<CategoryStat> stats;
    while (rows.next())
        stats.push_back(
            { codeIn<Category>(rows, 0), rows.number(1), rows.number(2), rows.number(3) });
    return stats;
}

RiskLevelCounts RawLedger::riskLevelCounts()
{
    RawStatement rows(m_database,
        "SELECT risk_level, COUNT(*) AS cnt FROM transactions WHERE 1=1 GROUP BY risk_level");
    RiskLevelCounts counts;
    qint64* const cells[] = { &counts.high, &counts.medium, &counts.low, &counts.normal };
    while (rows.next())
        *cells[static_cast<int>(codeIn<RiskLevel>(rows, 0))] += rows.number(1);
    return counts;
}

void RawLedger::reevaluate()
{
    m_database.run("BEGIN");
    const auto flagged = RiskRules::frequentGroups(flowsIn(m_database), coveredIn(m_database), {});
    write(m_database, evaluateAll(m_database, flagged));
    m_database.run("COMMIT");
}
