#pragma once

#include <QDate>
#include <QString>

#include <sqlite3.h>

/// SQLite's C interface with nothing but clean-up around it: what our own code is measured
/// against. Every failure ends the program, since a figure after one would mean nothing.
class RawDatabase final {
public:
    explicit RawDatabase(const QString& path);
    ~RawDatabase();
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    void run(const char* sql);
    sqlite3* handle() const { return m_handle; }

private:
    sqlite3* m_handle = nullptr;
};

/// A prepared statement; columns and parameters count as in the C interface (from 0 and from 1).
class RawStatement final {
public:
    RawStatement(RawDatabase& database, const char* sql);
    ~RawStatement();
    RawStatement(const RawStatement&) = delete;
    RawStatement& operator=(const RawStatement&) = delete;

    bool next();
    void reset() { sqlite3_reset(m_statement); }

    void bind(int index, qint64 value);
    /// Static text or text that lives until the statement has run.
    void bind(int index, const QByteArray& text);
    void bindNull(int index) { sqlite3_bind_null(m_statement, index); }

    bool isNull(int column) const
    {
        return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
    }
    qint64 number(int column) const { return sqlite3_column_int64(m_statement, column); }
    /// The column's own bytes, valid until the next row.
    QByteArrayView bytes(int column) const;
    QString text(int column) const { return QString::fromUtf8(bytes(column)); }
    QDate date(int column) const;

private:
    sqlite3_stmt* m_statement = nullptr;
    RawDatabase& m_database;
};
