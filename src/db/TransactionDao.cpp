#include "db/TransactionDao.h"

#include "core/TextRules.h"

#include <QHash>

#include <algorithm>
#include <array>

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

constexpr auto reviewedColumns = std::to_array<Column<Transaction>>({
    column<&Transaction::id>(u"id"),
    column<&Transaction::transDate>(u"trans_date"),
    column<&Transaction::direction>(u"direction"),
    column<&Transaction::category>(u"category"),
    column<&Transaction::amountFen>(u"amount_fen"),
    column<&Transaction::riskManualOverride>(u"risk_manual_override"),
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

// Texts as they are stored: Qt reads text columns as UTF-16, which a file in UTF-8 would undo.
// The order is that of `LineCells`.
constexpr QStringView lineColumns
    = u"t.id, CAST(t.trans_date AS BLOB), CAST(t.summary AS BLOB), CAST(t.direction AS BLOB), "
      "t.amount_fen, CAST(t.owner_account_type AS BLOB), CAST(t.counterparty_name AS BLOB), "
      "CAST(t.counterparty_account_type AS BLOB), CAST(t.category AS BLOB), "
      "t.project_id IS NOT NULL, CAST(p.name AS BLOB), "
      "CAST(t.risk_level AS BLOB), t.risk_manual_override IS NOT NULL, "
      "CAST(t.risk_reasons AS BLOB), CAST(t.note AS BLOB), ";

/// The cells of a row of `lineColumns`, which the views of its line look into.
class LineCells final {
public:
    const LedgerLine& read(const QSqlQuery& query)
    {
        for (std::size_t i = 0; i < m_cells.size(); ++i)
            m_cells[i] = query.value(static_cast<int>(i));
        m_line.id = number(0);
        m_line.date = date(1);
        m_line.summary = text(2);
        m_line.direction = value<Direction>(3);
        m_line.amountFen = number(4);
        m_line.ownerAccountType = value<AccountType>(5);
        m_line.counterpartyName = text(6);
        m_line.counterpartyAccountType = value<AccountType>(7);
        m_line.category = value<Category>(8);
        m_line.hasProject = number(9) == 1;
        m_line.projectName = text(10);
        m_line.riskLevel = value<RiskLevel>(11);
        m_line.riskIsManual = number(12) == 1;
        m_line.riskReasons = reasons(13);
        m_line.note = text(14);
        m_line.voucherCount = number(15);
        return m_line;
    }

private:
    qint64 number(std::size_t cell) const { return m_cells[cell].toLongLong(); }

    QByteArrayView bytes(std::size_t cell) const
    {
        const QVariant& value = m_cells[cell];
        return value.typeId() == QMetaType::QByteArray
            ? QByteArrayView(*static_cast<const QByteArray*>(value.constData()))
            : QByteArrayView();
    }

    QByteArrayView text(std::size_t cell)
    {
        if (!bytes(cell).isValidUtf8())
            m_cells[cell] = QString::fromUtf8(bytes(cell)).toUtf8();
        return bytes(cell);
    }

    // Nothing for what is not a date, as in records.
    QByteArrayView date(std::size_t cell) const
    {
        std::array<char16_t, 10> digits;
        const QByteArrayView stored = bytes(cell);
        if (stored.size() != static_cast<qsizetype>(digits.size()))
            return {};
        std::transform(stored.begin(), stored.end(), digits.begin(),
            [](char c) { return static_cast<unsigned char>(c); });
        return TextRules::dateFromText(digits).isValid() ? stored : QByteArrayView();
    }

    template <typename Enum> Enum value(std::size_t cell) const
    {
        const QLatin1String code(bytes(cell));
        for (const auto& row : codeTable<Enum>) {
            if (row.code == code)
                return row.value;
        }
        return codeFallback<Enum>;
    }

    // The same few reasons stand under most entries that have any.
    QStringList reasons(std::size_t cell)
    {
        if (bytes(cell).isEmpty())
            return {};
        const auto& json = *static_cast<const QByteArray*>(m_cells[cell].constData());
        auto known = m_reasons.constFind(json);
        if (known == m_reasons.cend()) {
            QStringList texts;
            CellValue::read(m_cells[cell], texts);
            known = m_reasons.insert(json, texts);
        }
        return *known;
    }

    std::array<QVariant, 16> m_cells;
    QHash<QByteArray, QStringList> m_reasons;
    LedgerLine m_line;
};

QString shareholderFlowStatement(const QString& columns = u"*"_s)
{
    return u"SELECT "_s + columns
        + u" FROM transactions WHERE category IN "
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
    return readAll<Transaction>(
        transactionColumns, searchStatement(filter), searchBindings(filter));
}

bool TransactionDao::visitLines(
    const TransactionFilter& filter, const std::function<void(const LedgerLine&)>& visit)
{
    QSqlQuery query = newQuery();
    if (!run(query, searchStatement(lineColumns, filter), searchBindings(filter)))
        return false;
    LineCells cells;
    while (query.next())
        visit(cells.read(query));
    return readToTheEnd(query);
}

QList<Transaction> TransactionDao::entriesToEvaluate()
{
    return readAll<Transaction>(evaluatedColumns, searchStatement({}), {});
}

QList<Transaction> TransactionDao::listShareholderFlows()
{
    return readAll<Transaction>(transactionColumns, shareholderFlowStatement(), {});
}

QList<Transaction> TransactionDao::shareholderFlowsToReview()
{
    // Named columns: of a star the driver would copy every text of every row.
    return readAll<Transaction>(reviewedColumns,
        shareholderFlowStatement(
            u"id, trans_date, direction, category, amount_fen, risk_manual_override"_s),
        {});
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

bool TransactionDao::setEvaluationDue()
{
    return write(
        u"UPDATE transactions SET risk_evaluated_at = NULL WHERE id = (SELECT MIN(id) FROM "
        "transactions)"_s,
        {});
}

bool TransactionDao::isEvaluationDue()
{
    return readNumber(
               u"SELECT EXISTS (SELECT 1 FROM transactions WHERE risk_evaluated_at IS NULL)"_s, {})
               .value_or(1)
        != 0;
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
    return searchStatement(u"t.*, p.name AS x_project_name,  ", filter);
}

QString TransactionDao::searchStatement(QStringView columns, const TransactionFilter& filter)
{
    QString sql = u"SELECT "_s + columns.toString()
        + u"(SELECT COUNT(*) FROM entity_links l    WHERE l.source_type = 'voucher' AND "
          "l.target_type = 'transaction'      AND l.target_id = t.id) AS x_voucher_count FROM "
          "transactions t LEFT JOIN projects p ON p.id = t.project_id WHERE 1=1"_s;
    sql += conditionsOf(filter).sql;
    sql += u" ORDER BY t.trans_date DESC, t.id DESC"_s;
    if (filter.limit > 0)
        sql += u" LIMIT :limit"_s;
    return sql;
}

BaseDao::Bindings TransactionDao::searchBindings(const TransactionFilter& filter)
{
    Bindings bindings = conditionsOf(filter).bindings;
    if (filter.limit > 0)
        bindings += { u":limit"_s, filter.limit };
    return bindings;
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
