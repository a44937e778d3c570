#include "db/LedgerFiguresDao.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr auto accountColumns = std::to_array<Column<AccountDirectionSum>>({
    column<&AccountDirectionSum::account>(u"owner_account_type"),
    column<&AccountDirectionSum::direction>(u"direction"),
    column<&AccountDirectionSum::count>(u"cnt"),
    column<&AccountDirectionSum::sumFen>(u"sum_fen"),
});

constexpr auto monthColumns = std::to_array<Column<MonthSum>>({
    column<&MonthSum::month>(u"month"),
    column<&MonthSum::incomeFen>(u"income_fen"),
    column<&MonthSum::expenseFen>(u"expense_fen"),
});

constexpr auto coveredColumns = std::to_array<Column<CoveredSum>>({
    column<&CoveredSum::documentId>(u"document_id"),
    column<&CoveredSum::count>(u"cnt"),
    column<&CoveredSum::sumFen>(u"sum_fen"),
    column<&CoveredSum::firstDate>(u"first_date"),
});

struct IdRow {
    qint64 id = 0;
};
constexpr auto idColumns = std::to_array<Column<IdRow>>({ column<&IdRow::id>(u"id") });

} // namespace

QList<AccountDirectionSum> LedgerFiguresDao::accountSums(QDate from, QDate to)
{
    const Conditions range = dateRange(from, to);
    return readAll<AccountDirectionSum>(accountColumns,
        u"SELECT owner_account_type, direction, COUNT(*) AS cnt, SUM(amount_fen) AS sum_fen FROM "
        "transactions WHERE 1=1"_s
            + range.sql + u" GROUP BY owner_account_type, direction"_s,
        range.bindings);
}

QList<MonthSum> LedgerFiguresDao::monthSums(QDate from, QDate to)
{
    const Conditions range = dateRange(from, to);
    return readAll<MonthSum>(monthColumns,
        u"SELECT substr(trans_date, 1, 7) AS month, SUM(CASE WHEN direction='in' THEN amount_fen "
        "ELSE 0 END) AS income_fen, SUM(CASE WHEN direction='out' THEN amount_fen ELSE 0 END) AS "
        "expense_fen FROM transactions WHERE 1=1"_s
            + range.sql + u" GROUP BY month ORDER BY month"_s,
        range.bindings);
}

qint64 LedgerFiguresDao::ownerBalanceFen(QDate from, QDate to)
{
    const Conditions range = dateRange(from, to);
    return readNumber(u"SELECT COALESCE(SUM(CASE WHEN direction='in' THEN amount_fen ELSE "
                      "-amount_fen END),0) FROM transactions WHERE category IN "
                      "('shareholder_in','shareholder_out')"_s
            + range.sql,
        range.bindings)
        .value_or(0);
}

QList<CoveredSum> LedgerFiguresDao::fundDecisionSums()
{
    return readAll<CoveredSum>(coveredColumns,
        u"SELECT d.id AS document_id, COUNT(*) AS cnt, SUM(t.amount_fen) AS sum_fen, "
        "MIN(t.trans_date) AS first_date FROM documents d JOIN entity_links el ON el.source_type = "
        "'document' AND el.source_id = d.id AND el.target_type = 'transaction' JOIN transactions t "
        "ON t.id = el.target_id WHERE d.doc_type = 'fund_decision' GROUP BY d.id ORDER BY d.id"_s,
        {});
}

QList<qint64> LedgerFiguresDao::largeEntriesWithoutVoucher(qint64 thresholdFen)
{
    // The plus keeps SQLite from walking the index of dates for the order: it would fetch every
    // row of the ledger from all over the file, which takes five times as long as sorting.
    const auto rows = readAll<IdRow>(idColumns,
        u"SELECT t.id FROM transactions t WHERE t.amount_fen >= :threshold AND NOT EXISTS (SELECT "
        "1 FROM entity_links l WHERE l.source_type = 'voucher' AND l.target_type = 'transaction' "
        "AND l.target_id = t.id) ORDER BY +t.trans_date DESC, t.id DESC"_s,
        { { u":threshold"_s, thresholdFen } });
    QList<qint64> ids;
    for (const IdRow& row : rows)
        ids += row.id;
    return ids;
}

qint64 LedgerFiguresDao::entryCount(QDate from, QDate to)
{
    const Conditions range = dateRange(from, to);
    return readNumber(u"SELECT COUNT(*) FROM transactions WHERE 1=1"_s + range.sql, range.bindings)
        .value_or(0);
}
