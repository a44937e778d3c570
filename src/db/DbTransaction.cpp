#include "db/DbTransaction.h"

#include "db/Connection.h"
#include "db/SqlErrorText.h"

#include <QSqlError>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

DbTransaction* innermostGuard = nullptr;

} // namespace

DbTransaction::DbTransaction()
    : m_outer(innermostGuard)
{
    if (m_outer)
        m_savepoint = m_outer->m_savepoint + u"inner_"_s;
    m_open = begin();
    if (m_open)
        innermostGuard = this;
}

DbTransaction::~DbTransaction()
{
    rollback();
}

bool DbTransaction::commit()
{
    if (!m_open)
        return false;
    if (innermostGuard != this)
        m_lastError = u"内层事务尚未结束"_s;
    else if (run(m_savepoint.isEmpty() ? u"COMMIT"_s : u"RELEASE "_s + m_savepoint)) {
        end();
        return true;
    }
    const QString reason = m_lastError;
    qWarning("Transaction commit failed: %s", qUtf8Printable(reason));
    // A failed commit leaves the transaction open; the next one could not begin.
    rollback();
    m_lastError = reason;
    return false;
}

void DbTransaction::rollback()
{
    if (!m_open)
        return;
    // SQLite itself rolls everything back after some errors, a full disk for one. Then there is
    // nothing left to take back, and these statements fail without harm.
    const bool done = m_savepoint.isEmpty()
        ? run(u"ROLLBACK"_s)
        : run(u"ROLLBACK TO "_s + m_savepoint) && run(u"RELEASE "_s + m_savepoint);
    if (!done)
        qWarning("Transaction rollback failed: %s", qUtf8Printable(m_lastError));
    end();
}

void DbTransaction::abandonAll()
{
    while (innermostGuard)
        innermostGuard->end();
}

bool DbTransaction::begin()
{
    if (!m_outer)
        return run(u"BEGIN"_s);
    // Inside a living transaction BEGIN is refused. When it is accepted, SQLite has rolled the
    // outer transaction back, and a savepoint would be a new one that commits on its own.
    if (run(u"BEGIN"_s)) {
        run(u"ROLLBACK"_s);
        m_lastError = u"外层事务已被回滚"_s;
        return false;
    }
    return run(u"SAVEPOINT "_s + m_savepoint);
}

bool DbTransaction::run(const QString& sql)
{
    const QSqlDatabase database = Connection::current();
    if (!database.isOpen()) {
        m_lastError = u"数据库未打开"_s;
        return false;
    }
    QSqlQuery query(database);
    const bool done = query.exec(sql);
    m_lastError = done ? QString() : sqlErrorText(query.lastError());
    return done;
}

void DbTransaction::end()
{
    while (innermostGuard != this) {
        innermostGuard->m_open = false;
        innermostGuard = innermostGuard->m_outer;
    }
    m_open = false;
    innermostGuard = m_outer;
}
