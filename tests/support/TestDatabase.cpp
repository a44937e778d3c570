#include "support/TestDatabase.h"

#include "db/Connection.h"
#include "db/SqlScript.h"

#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTest>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace TestDatabase {

namespace {

// A second connection for as long as it lives.
class FileConnection final {
public:
    explicit FileConnection(const QString& path)
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_name);
        database.setDatabaseName(path);
        m_open = database.open();
    }
    ~FileConnection()
    {
        QSqlDatabase::database(m_name, false).close();
        QSqlDatabase::removeDatabase(m_name);
    }
    FileConnection(const FileConnection&) = delete;
    FileConnection& operator=(const FileConnection&) = delete;
    bool isOpen() const { return m_open; }
    QSqlDatabase database() const { return QSqlDatabase::database(m_name, false); }

private:
    QString m_name = u"test_file"_s;
    bool m_open = false;
};

QString runOn(const QSqlDatabase& database, const QStringList& statements)
{
    for (const QString& statement : statements) {
        QSqlQuery query(database);
        if (!query.exec(statement))
            return query.lastError().text() + u" | "_s + statement;
    }
    return {};
}

QStringList rowsOn(const QSqlDatabase& database, const QString& sql)
{
    QSqlQuery query(database);
    if (!query.exec(sql))
        return { query.lastError().text() };
    QStringList rows;
    while (query.next()) {
        QStringList cells;
        for (int i = 0; i < query.record().count(); ++i)
            cells += query.isNull(i) ? u"∅"_s : query.value(i).toString();
        rows += cells.join(u'|');
    }
    return rows;
}

} // namespace

QString run(const QStringList& statements)
{
    return runOn(Connection::current(), statements);
}

bool refuseUpdates(const QString& table)
{
    return refuse(u"UPDATE ON "_s + table);
}

bool refuse(const QString& event)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^SQL error: refused"_s));
    return run({ u"CREATE TRIGGER refuse BEFORE %1 BEGIN SELECT RAISE(ABORT, 'refused'); END"_s.arg(
                   event) })
        .isEmpty();
}

bool refuseCommitAfter(const QString& event)
{
    return run({ u"CREATE TABLE late (id INTEGER REFERENCES projects(id) "
                 "DEFERRABLE INITIALLY DEFERRED)"_s,
                   u"CREATE TRIGGER late_refusal AFTER %1 BEGIN INSERT INTO late VALUES (99); "
                   "END"_s.arg(event) })
        .isEmpty();
}

QStringList rows(const QString& sql)
{
    return rowsOn(Connection::current(), sql);
}

QString row(const QString& sql)
{
    return rows(sql).value(0);
}

QStringList dump()
{
    QStringList content = rows(u"PRAGMA user_version"_s);
    content += rows(u"SELECT type, name, tbl_name, sql FROM sqlite_master ORDER BY name"_s);
    for (const QString& table : rows(u"SELECT name FROM sqlite_master WHERE type = 'table'"_s))
        content += table + u": "_s + rows(u"SELECT * FROM "_s + table).join(u" ; "_s);
    return content;
}

QString runOnFile(const QString& path, const QString& script)
{
    const FileConnection connection(path);
    if (!connection.isOpen())
        return u"cannot open "_s + path;
    return runOn(connection.database(), SqlScript::splitStatements(script));
}

QString rowOfFile(const QString& path, const QString& sql)
{
    const FileConnection connection(path);
    return connection.isOpen() ? rowsOn(connection.database(), sql).value(0) : u"(no file)"_s;
}

} // namespace TestDatabase
