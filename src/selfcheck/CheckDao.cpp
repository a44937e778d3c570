#include "selfcheck/CheckDao.h"

std::optional<qint64> CheckDao::number(const QString& sql)
{
    return readNumber(sql, {});
}

std::optional<QStringList> CheckDao::texts(const QString& sql)
{
    QSqlQuery query = newQuery();
    if (!run(query, sql, {}))
        return std::nullopt;
    QStringList found;
    while (query.next())
        found += query.value(0).toString();
    if (!readToTheEnd(query))
        return std::nullopt;
    return found;
}
