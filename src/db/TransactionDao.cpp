#include "db/TransactionDao.h"

#include "core/TextRules.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

constexpr auto transactionColumns = std::to_array<Column<Transaction>>({
    column<&Transaction::id>(u"id"),
    column<&Transaction::transDate>(u"trans_date"),
    column<&Transaction::summary>(u"summary"),
    column<&Transaction::direction>(u"direction"),
    column<&Transaction::amountFen>(u"amount_fen"),
    column<&Transaction::ownerAccountType>(u"owner_account_type"),
    column<&Transaction::counterpartyName>(u"counterparty_name"),
    column<&Transaction::counterpartyAccountType>(u"counterparty_account_type"),
    column<&Transaction::category>(u"category"),
    column<&Transaction::projectId>(u"project_id"),
    column<&Transaction::note>(u"note"),
    column<&Transaction::riskLevel>(u"risk_level"),
    column<&Transaction::riskAutoLevel>(u"risk_auto_level"),
    column<&Transaction::riskReasons>(u"risk_reasons"),
    column<&Transaction::riskManualOverride>(u"risk_manual_override"),
    column<&Transaction::riskManualNote>(u"risk_manual_note"),
    column<&Transaction::riskEvaluatedAt>(u"risk_evaluated_at"),
    column<&Transaction::createdAt>(u"created_at"),
    column<&Transaction::updatedAt>(u"updated_at"),
    column<&Transaction::projectName>(u"x_project_name"),
    column<&Transaction::voucherCount>(u"x_voucher_count"),
});

constexpr auto evaluatedColumns = std::to_array<Column<Transaction>>({
    column<&Transaction::id>(u"id"),
    column<&Transaction::direction>(u"direction"),
    column<&Transaction::amountFen>(u"amount_fen"),
    column<&Transaction::ownerAccountType>(u"owner_account_type"),
    column<&Transaction::category>(u"category"),
    column<&Transaction::note>(u"note"),
    column<&Transaction::voucherCount>(u"x_voucher_count"),
});

constexpr auto flowColumns = std::to_array<Column<DatedFlow>>({
    column<&DatedFlow::id>(u"id"),
    column<&DatedFlow::date>(u"trans_date"),
});

constexpr auto counterpartyColumns = std::to_array<Column<Counterparty>>({
    column<&Counterparty::name>(u"counterparty_name"),
    column<&Counterparty::accountType>(u"counterparty_account_type"),
});

constexpr auto totalsColumns = std::to_array<Column<ProjectTotals>>({
    column<&ProjectTotals::incomeFen>(u"income_fen"),
    column<&ProjectTotals::expenseFen>(u"expense_fen"),
    column<&ProjectTotals::count>(u"cnt"),
});

constexpr auto categoryColumns = std::to_array<Column<CategoryStat>>({
    column<&CategoryStat::category>(u"category"),
    column<&CategoryStat::count>(u"cnt"),
    column<&CategoryStat::incomeFen>(u"income_fen"),
    column<&CategoryStat::expenseFen>(u"expense_fen"),
});

struct LevelCount {
    RiskLevel level = RiskLevel::Normal;
    qint64 count = 0;
};

constexpr auto levelColumns = std::to_array<Column<LevelCount>>({
    column<&LevelCount::level>(u"risk_level"),
    column<&LevelCount::count>(u"cnt"),
});

QString shareholderFlowStatement()
{
    return u"SELECT * FROM transactions WHERE category IN "
           "('shareholder_in','shareholder_out','expense_reimburse') ORDER BY trans_date ASC, id "
           "ASC"_s;
}

// The column's value for each level, in the order of the levels.
QVariantList levelCodes()
{
    QVariantList codes;
    for (const RiskLevel level : allValues<RiskLevel>())
        codes += codeOf(level);
    return codes;
}

qint64& countOf(RiskLevelCounts& counts, RiskLevel level)
{
    switch (level) {
    case RiskLevel::High:
        return counts.high;
    case RiskLevel::Medium:
        return counts.medium;
    case RiskLevel::Low:
        return counts.low;
    case RiskLevel::Normal:
        break;
    }
    return counts.normal;
}

} // namespace

bool TransactionDao::insert(Transaction& entry)
{
    return insertRow(
        u"INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
        "owner_account_type, counterparty_name, counterparty_account_type, category, project_id, "
        "note) VALUES (:trans_date, :summary, :direction, :amount_fen, :owner_account_type, "
        ":counterparty_name, :counterparty_account_type, :category, :project_id, :note)"_s,
        bindingsOf(entry), entry.id);
}

bool TransactionDao::update(const Transaction& entry)
{
    return write(
        u"UPDATE transactions SET trans_date = :trans_date, summary = :summary, direction = "
        ":direction, amount_fen = :amount_fen, owner_account_type = :owner_account_type, "
        "counterparty_name = :counterparty_name, counterparty_account_type = "
        ":counterparty_account_type, category = :category, project_id = :project_id, note = :note "
        "WHERE id = :id"_s,
        bindingsOf(entry) << Binding { u":id"_s, entry.id });
}

bool TransactionDao::remove(qint64 id)
{
    return write(u"DELETE FROM transactions WHERE id = :id"_s, { { u":id"_s, id } });
}

std::optional<Transaction> TransactionDao::findById(qint64 id)
{
    return readOne<Transaction>(
        transactionColumns, u"SELECT * FROM transactions WHERE id = :id"_s, { { u":id"_s, id } });
}

QList<Transaction> TransactionDao::search(const TransactionFilter& filter)
{
    Bindings bindings = conditionsOf(filter).bindings;
    if (filter.limit > 0)
        bindings += { u":limit"_s, filter.limit };
    return readAll<Transaction>(transactionColumns, searchStatement(filter), bindings);
}

QList<Transaction> TransactionDao::entriesToEvaluate()
{
    return readAll<Transaction>(evaluatedColumns, searchStatement({}), {});
}

QList<Transaction> TransactionDao::listShareholderFlows()
{
    return readAll<Transaction>(transactionColumns, shareholderFlowStatement(), {});
}

QList<DatedFlow> TransactionDao::shareholderFlowDates()
{
    return readAll<DatedFlow>(flowColumns, shareholderFlowStatement(), {});
}

QList<Counterparty> TransactionDao::knownCounterparties()
{
    // Beside MAX the other columns come from the row that holds it.
    return readAll<Counterparty>(counterpartyColumns,
        u"SELECT counterparty_name, counterparty_account_type, MAX(id) AS latest FROM transactions "
        "GROUP BY counterparty_name ORDER BY latest DESC"_s,
        {});
}

ProjectTotals TransactionDao::projectTotals(qint64 projectId)
{
    const auto totals = readOne<ProjectTotals>(totalsColumns,
        u"SELECT COALESCE(SUM(CASE WHEN direction='in' THEN amount_fen ELSE 0 END),0) AS "
        "income_fen, COALESCE(SUM(CASE WHEN direction='out' THEN amount_fen ELSE 0 END),0) AS "
        "expense_fen, COUNT(*) AS cnt FROM transactions WHERE project_id = :pid"_s,
        { { u":pid"_s, projectId } });
    return totals.value_or(ProjectTotals());
}

QList<CategoryStat> TransactionDao::categoryStats(QDate from, QDate to)
{
    const Conditions range = dateRange(from, to);
    return readAll<CategoryStat>(categoryColumns,
        u"SELECT category, COUNT(*) AS cnt, COALESCE(SUM(CASE WHEN direction='in' THEN amount_fen "
        "ELSE 0 END),0) AS income_fen, COALESCE(SUM(CASE WHEN direction='out' THEN amount_fen "
        "ELSE 0 END),0) AS expense_fen FROM transactions WHERE 1=1"_s
            + range.sql + u" GROUP BY category ORDER BY income_fen + expense_fen DESC"_s,
        range.bindings);
}

RiskLevelCounts TransactionDao::riskLevelCounts(QDate from, QDate to)
{
    const Conditions range = dateRange(from, to);
    const auto rows = readAll<LevelCount>(levelColumns,
        u"SELECT risk_level, COUNT(*) AS cnt FROM transactions WHERE 1=1"_s + range.sql
            + u" GROUP BY risk_level"_s,
        range.bindings);
    RiskLevelCounts counts;
    for (const LevelCount& row : rows)
        countOf(counts, row.level) += row.count;
    return counts;
}

bool TransactionDao::updateAutoRisk(qint64 id, RiskLevel level, const QStringList& reasons)
{
    return updateAutoRisks({ { id, level, reasons } }) == 1;
}

qsizetype TransactionDao::updateAutoRisks(const QList<AutoRisk>& results)
{
    QSqlQuery query = newQuery();
    if (!prepare(query,
            u"UPDATE transactions SET risk_auto_level = :auto_level, risk_reasons = :reasons, "
            "risk_evaluated_at = :evaluated, risk_level = CASE WHEN risk_manual_override IS NULL "
            "THEN :auto_level                   ELSE risk_manual_override END WHERE id = :id"_s))
        return 0;
    // The whole ledger is written on every evaluation: what is equal for all rows is made once.
    query.bindValue(u":evaluated"_s, TextRules::currentTimestamp());
    const QVariantList codes = levelCodes();
    QHash<QStringList, QVariant> reasonTexts;
    qsizetype written = 0;
    for (const AutoRisk& result : results) {
        auto reasons = reasonTexts.constFind(result.reasons);
        if (reasons == reasonTexts.cend())
            reasons = reasonTexts.insert(result.reasons, CellValue::fromTexts(result.reasons));
        query.bindValue(u":auto_level"_s, codes.at(static_cast<qsizetype>(result.level)));
        query.bindValue(u":reasons"_s, *reasons);
        query.bindValue(u":id"_s, result.transactionId);
        if (!exec(query))
            break;
        ++written;
    }
    return written;
}

bool TransactionDao::setManualOverride(
    qint64 id, std::optional<RiskLevel> level, const QString& note)
{
    return write(
        u"UPDATE transactions SET risk_manual_override = :override, risk_manual_note = :note, "
        "risk_level = CASE WHEN :override IS NULL THEN risk_auto_level ELSE :override END WHERE id "
        "= :id"_s,
        { { u":override"_s, codeOrNull(level) }, { u":note"_s, note }, { u":id"_s, id } });
}

QString TransactionDao::searchStatement(const TransactionFilter& filter)
{
    QString sql
        = u"SELECT t.*, p.name AS x_project_name,  (SELECT COUNT(*) FROM entity_links l    WHERE "
          "l.source_type = 'voucher' AND l.target_type = 'transaction'      AND l.target_id = "
          "t.id) "
          "AS x_voucher_count FROM transactions t LEFT JOIN projects p ON p.id = t.project_id "
          "WHERE "
          "1=1"_s;
    sql += conditionsOf(filter).sql;
    sql += u" ORDER BY t.trans_date DESC, t.id DESC"_s;
    if (filter.limit > 0)
        sql += u" LIMIT :limit"_s;
    return sql;
}

BaseDao::Conditions TransactionDao::conditionsOf(const TransactionFilter& filter)
{
    Conditions conditions;
    if (filter.dateFrom.isValid())
        conditions.add(u" AND t.trans_date >= :date_from"_s, u":date_from"_s,
            TextRules::dateText(filter.dateFrom));
    if (filter.dateTo.isValid())
        conditions.add(
            u" AND t.trans_date <= :date_to"_s, u":date_to"_s, TextRules::dateText(filter.dateTo));
    if (filter.owner)
        conditions.add(u" AND t.owner_account_type = :owner"_s, u":owner"_s, codeOf(*filter.owner));
    if (filter.category)
        conditions.add(u" AND t.category = :category"_s, u":category"_s, codeOf(*filter.category));
    if (filter.risk)
        conditions.add(u" AND t.risk_level = :risk"_s, u":risk"_s, codeOf(*filter.risk));
    if (filter.projectId > 0)
        conditions.add(u" AND t.project_id = :project_id"_s, u":project_id"_s, filter.projectId);
    if (!TextRules::isBlank(filter.keyword))
        conditions.add(u" AND (t.summary LIKE :kw OR t.counterparty_name LIKE :kw)"_s, u":kw"_s,
            containing(filter.keyword.trimmed()));
    return conditions;
}

BaseDao::Bindings TransactionDao::bindingsOf(const Transaction& entry)
{
    return {
        { u":trans_date"_s, dateOrNull(entry.transDate) },
        { u":summary"_s, notNull(entry.summary) },
        { u":direction"_s, codeOf(entry.direction) },
        { u":amount_fen"_s, entry.amountFen },
        { u":owner_account_type"_s, codeOf(entry.ownerAccountType) },
        { u":counterparty_name"_s, notNull(entry.counterpartyName) },
        { u":counterparty_account_type"_s, codeOf(entry.counterpartyAccountType) },
        { u":category"_s, codeOf(entry.category) },
        { u":project_id"_s, orNull(entry.projectId) },
        { u":note"_s, nullIfEmpty(entry.note) },
    };
}
