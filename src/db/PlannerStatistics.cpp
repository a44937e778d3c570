#include "db/PlannerStatistics.h"

#include "db/Connection.h"
#include "db/DbTransaction.h"

#include <QMap>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace PlannerStatistics {

namespace {

using Rows = QMap<QString, QString>; // index name to statistics text

// The number of rows, then how many of them share the first column, the first two, and so on.
const Rows& fixedRows()
{
    static const Rows rows {
        { u"idx_link_source"_s, u"10000 5000 2"_s },
        { u"idx_link_target"_s, u"10000 5000 2"_s },
        { u"sqlite_autoindex_entity_links_1"_s, u"10000 5000 2 2 1"_s },
    };
    return rows;
}

bool run(QSqlQuery& query, const QString& sql, QString* error)
{
    if (query.exec(sql))
        return true;
    *error = query.lastError().text();
    return false;
}

// A file that was never analysed has no such table: then there are no rows.
Rows storedRows()
{
    Rows rows;
    QSqlQuery query(Connection::current());
    if (!query.exec(u"SELECT idx, stat FROM sqlite_stat1 WHERE tbl = 'entity_links'"_s))
        return rows;
    while (query.next())
        rows.insert(query.value(0).toString(), query.value(1).toString());
    return rows;
}

bool writeRows(QString* error)
{
    QSqlQuery query(Connection::current());
    // Only ANALYZE may create the table; of the schema table it counts nothing.
    if (!run(query, u"ANALYZE sqlite_schema"_s, error)
        || !run(query, u"DELETE FROM sqlite_stat1 WHERE tbl = 'entity_links'"_s, error))
        return false;
    for (const auto& [index, statistics] : fixedRows().asKeyValueRange()) {
        const QString insert
            = u"INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('entity_links', '%1', '%2')"_s;
        if (!run(query, insert.arg(index, statistics), error))
            return false;
    }
    return true;
}

} // namespace

bool ensure(QString* error)
{
    if (storedRows() == fixedRows())
        return true;
    DbTransaction transaction;
    if (transaction.isOpen() && writeRows(error)) {
        if (transaction.commit()) {
            QSqlQuery reload(Connection::current());
            return run(reload, u"ANALYZE sqlite_schema"_s, error);
        }
    }
    if (!transaction.lastError().isEmpty())
        *error = transaction.lastError();
    return false;
}

} // namespace PlannerStatistics
