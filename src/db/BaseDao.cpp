#include "db/BaseDao.h"

#include "core/TextRules.h"
#include "db/Connection.h"
#include "db/SerialCode.h"
#include "db/SqlErrorText.h"

#include <QSqlError>

using namespace Qt::StringLiterals;

void BaseDao::Conditions::add(
    const QString& clause, const QString& placeholder, const QVariant& value)
{
    sql += clause;
    bindings += { placeholder, value };
}

BaseDao::Conditions BaseDao::dateRange(QDate from, QDate to)
{
    Conditions conditions;
    if (from.isValid())
        conditions.add(u" AND trans_date >= :from"_s, u":from"_s, TextRules::dateText(from));
    if (to.isValid())
        conditions.add(u" AND trans_date <= :to"_s, u":to"_s, TextRules::dateText(to));
    return conditions;
}

QSqlQuery BaseDao::newQuery()
{
    QSqlQuery query(Connection::current());
    query.setForwardOnly(true);
    return query;
}

bool BaseDao::prepare(QSqlQuery& query, const QString& sql)
{
    if (!Connection::current().isOpen())
        return failStatement(u"数据库未打开"_s, sql);
    if (query.prepare(sql))
        return true;
    // Running it all the same would replace the reason by a complaint about parameters.
    failStatement(query.lastError().text(), sql);
    return fail(sqlErrorText(query.lastError()));
}

bool BaseDao::exec(QSqlQuery& query)
{
    if (query.exec())
        return true;
    failStatement(query.lastError().text(), query.lastQuery());
    return fail(sqlErrorText(query.lastError()));
}

bool BaseDao::run(QSqlQuery& query, const QString& sql, const Bindings& bindings)
{
    if (!prepare(query, sql))
        return false;
    for (const Binding& binding : bindings)
        query.bindValue(binding.placeholder, binding.value);
    return exec(query);
}

bool BaseDao::readToTheEnd(const QSqlQuery& query)
{
    if (!query.lastError().isValid())
        return true;
    failStatement(query.lastError().text(), query.lastQuery());
    return fail(sqlErrorText(query.lastError()));
}

bool BaseDao::write(const QString& sql, const Bindings& bindings)
{
    QSqlQuery query = newQuery();
    return run(query, sql, bindings);
}

bool BaseDao::insertRow(const QString& sql, const Bindings& bindings, qint64& id)
{
    QSqlQuery query = newQuery();
    if (!run(query, sql, bindings))
        return false;
    id = query.lastInsertId().toLongLong();
    return true;
}

std::optional<qint64> BaseDao::readNumber(const QString& sql, const Bindings& bindings)
{
    QSqlQuery query = newQuery();
    if (!run(query, sql, bindings) || !query.next())
        return std::nullopt;
    return query.value(0).toLongLong();
}

int BaseDao::readCount(const QString& sql, const Bindings& bindings)
{
    return static_cast<int>(readNumber(sql, bindings).value_or(0));
}

QString BaseDao::nextSerialCode(const QString& sql, const QString& prefix)
{
    const auto sequence = readNumber(sql, { { u":pattern"_s, prefix + u'%' } });
    return SerialCode::text(prefix, sequence.value_or(1));
}

QVariant BaseDao::notNull(const QString& text)
{
    return text.isNull() ? u""_s : text;
}

QVariant BaseDao::nullIfEmpty(const QString& text)
{
    return TextRules::isBlank(text) ? QVariant() : QVariant(text);
}

QVariant BaseDao::dateOrNull(QDate date)
{
    return date.isValid() ? QVariant(TextRules::dateText(date)) : QVariant();
}

QString BaseDao::containing(const QString& keyword)
{
    // A keyword copied from elsewhere may hold direction marks, stored texts hold none.
    return u'%' + TextRules::withoutDirectionMarks(keyword) + u'%';
}

bool BaseDao::fail(const QString& reason)
{
    m_lastError = reason;
    return false;
}

bool BaseDao::failStatement(const QString& error, const QString& sql)
{
    qWarning("SQL error: %s | %s", qUtf8Printable(error), qUtf8Printable(sql));
    return fail(error);
}
