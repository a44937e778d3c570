#include "support/RawDatabase.h"

namespace {

void require(bool done, sqlite3* database, const char* what)
{
    if (!done)
        qFatal("%s: %s", what, sqlite3_errmsg(database));
}

int numberOf(QByteArrayView digits)
{
    int number = 0;
    for (const char c : digits)
        number = number * 10 + (c - '0');
    return number;
}

} // namespace

RawDatabase::RawDatabase(const QString& path)
{
    require(sqlite3_open(path.toUtf8().constData(), &m_handle) == SQLITE_OK, m_handle, "open");
    // As the program opens its own.
    run("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL");
}

RawDatabase::~RawDatabase()
{
    sqlite3_close(m_handle);
}

void RawDatabase::run(const char* sql)
{
    require(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK, m_handle, sql);
}

RawStatement::RawStatement(RawDatabase& database, const char* sql)
    : m_database(database)
{
    require(sqlite3_prepare_v2(database.handle(), sql, -1, &m_statement, nullptr) == SQLITE_OK,
        database.handle(), sql);
}

RawStatement::~RawStatement()
{
    sqlite3_finalize(m_statement);
}

bool RawStatement::next()
{
    const int code = sqlite3_step(m_statement);
    require(code == SQLITE_ROW || code == SQLITE_DONE, m_database.handle(), "step");
    return code == SQLITE_ROW;
}

void RawStatement::bind(int index, qint64 value)
{
    sqlite3_bind_int64(m_statement, index, value);
}

void RawStatement::bind(int index, const QByteArray& text)
{
    sqlite3_bind_text(
        m_statement, index, text.constData(), static_cast<int>(text.size()), SQLITE_STATIC);
}

QByteArrayView RawStatement::bytes(int column) const
{
    const unsigned char* text = sqlite3_column_text(m_statement, column);
    return { text, sqlite3_column_bytes(m_statement, column) };
}

QDate RawStatement::date(int column) const
{
    const QByteArrayView text = bytes(column);
    return text.size() == 10
        ? QDate(numberOf(text.first(4)), numberOf(text.sliced(5, 2)), numberOf(text.last(2)))
        : QDate();
}
