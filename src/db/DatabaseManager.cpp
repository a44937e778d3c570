#include "db/DatabaseManager.h"

#include "core/AppPaths.h"
#include "db/Connection.h"
#include "db/DbTransaction.h"
#include "db/PlannerStatistics.h"
#include "db/SqlErrorText.h"
#include "db/SqlScript.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

using namespace Qt::StringLiterals;

// A static library's resources are dropped by the linker unless something asks for them, and the
// macro only works outside of namespaces.
static void registerSqlResources()
{
    Q_INIT_RESOURCE(sql);
}

namespace {

constexpr int currentVersion = 3;
constexpr int sqliteReadOnly = 8; // SQLITE_READONLY

bool isReadOnlyError(const QSqlError& error)
{
    // The lowest byte is the primary code, the higher ones refine it.
    return (error.nativeErrorCode().toInt() & 0xff) == sqliteReadOnly;
}

// SQLite gives the files of the write-ahead log the mode of the database. Those of a file that was
// read-only stay behind and would keep it read-only for good, even after the owner has made it
// writable. A log that holds anything is never touched. The caller has no connection open, and the
// instance lock keeps other processes away.
void removeReadOnlyLeftovers()
{
    const QFileInfo log(AppPaths::databasePath() + u"-wal"_s);
    const QFileInfo index(AppPaths::databasePath() + u"-shm"_s);
    if (!index.exists() || index.isWritable() || log.size() > 0)
        return;
    QFile::remove(index.filePath());
    if (log.exists())
        QFile::remove(log.filePath());
}

// Asks SQLite itself: permissions, mount options and write-protected media all end here. The
// statement needs the right to write and is rolled back before anything is written.
bool databaseIsReadOnly(qint64 version)
{
    const DbTransaction probe;
    QSqlQuery query(Connection::current());
    return !query.exec(u"PRAGMA user_version = %1"_s.arg(version))
        && isReadOnlyError(query.lastError());
}

bool readResource(const QString& path, QString* text)
{
    registerSqlResources();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    *text = QString::fromUtf8(file.readAll());
    return true;
}

bool hasColumn(const QString& table, const QString& column)
{
    QSqlQuery query(Connection::current());
    query.exec(u"PRAGMA table_info(%1)"_s.arg(table));
    while (query.next()) {
        if (query.value(1).toString().compare(column, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

// A path in the backups folder that is not taken yet.
QString migrationCopyPath(qint64 fromVersion)
{
    const QString stamp = QDateTime::currentDateTime().toString(u"yyyyMMdd_HHmmss");
    const QString base = u"%1/brixa_before_v%2_from_v%3_%4"_s.arg(AppPaths::backupsDir(),
        QString::number(currentVersion), QString::number(fromVersion), stamp);
    QString path = base + u".db"_s;
    for (int number = 2; QFile::exists(path); ++number)
        path = u"%1_%2.db"_s.arg(base, QString::number(number));
    return path;
}

// One consistent file, whatever lies in the write-ahead log.
bool copyDatabase(const QString& path, QString* error)
{
    if (!QDir().mkpath(AppPaths::backupsDir())) {
        *error = u"无法创建文件夹 %1"_s.arg(AppPaths::backupsDir());
        return false;
    }
    QString quoted = path;
    quoted.replace(u'\'', u"''"_s);
    QSqlQuery query(Connection::current());
    if (query.exec(u"VACUUM INTO '%1'"_s.arg(quoted)))
        return true;
    *error = query.lastError().text();
    QFile::remove(path); // half a copy must not look like one
    return false;
}

} // namespace

DatabaseManager& DatabaseManager::instance()
{
    static DatabaseManager manager;
    return manager;
}

bool DatabaseManager::open()
{
    close();
    removeReadOnlyLeftovers(); // those of an earlier process
    m_lastError.clear();
    m_readOnly = false;
    if (!openConnection() || !applyPragmas())
        return false;
    if (!ensureSchema() || !verifyIntegrity())
        return false;
    preparePlanner();
    return true;
}

void DatabaseManager::close()
{
    DbTransaction::abandonAll();
    // Without a connection the files may belong to another, running instance.
    if (!QSqlDatabase::contains(Connection::name()))
        return;
    // The handle must be gone before the connection is removed.
    if (QSqlDatabase database = Connection::current(); database.isOpen())
        database.close();
    QSqlDatabase::removeDatabase(Connection::name());
    removeReadOnlyLeftovers();
}

qint64 DatabaseManager::userVersion()
{
    return readUserVersion().value_or(0);
}

bool DatabaseManager::integrityCheck(QString* detail) const
{
    QSqlQuery query(Connection::current());
    QString finding;
    bool sound = false;
    if (!query.exec(u"PRAGMA integrity_check"_s)) {
        finding = query.lastError().text();
    } else if (!query.next()) {
        finding = u"无结果"_s;
    } else {
        finding = query.value(0).toString();
        sound = finding.compare(u"ok"_s, Qt::CaseInsensitive) == 0;
    }
    if (detail)
        *detail = finding;
    return sound;
}

bool DatabaseManager::checkpoint()
{
    QSqlQuery query(Connection::current());
    if (!query.exec(u"PRAGMA wal_checkpoint(TRUNCATE)"_s))
        return fail(sqlErrorText(query.lastError()));
    if (query.next() && query.value(0).toInt() != 0)
        qWarning("WAL checkpoint is incomplete: the database is busy");
    return true;
}

QStringList DatabaseManager::tableNames() const
{
    QStringList names;
    QSqlQuery query(Connection::current());
    query.exec(u"SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite_%' "
               "ORDER BY name"_s);
    while (query.next())
        names += query.value(0).toString();
    return names;
}

bool DatabaseManager::openConnection()
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s);
    database.setDatabaseName(AppPaths::databasePath());
    database.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=5000"_s);
    if (!database.open()) {
        fail(database.lastError().text());
        qCritical("Cannot open database: %s", qUtf8Printable(m_lastError));
        return false;
    }
    return true;
}

bool DatabaseManager::applyPragmas()
{
    const QString journalMode = u"PRAGMA journal_mode = WAL"_s;
    QSqlQuery query(Connection::current());
    for (const QString& pragma : { journalMode, u"PRAGMA foreign_keys = ON"_s,
             u"PRAGMA encoding = 'UTF-8'"_s, u"PRAGMA busy_timeout = 5000"_s }) {
        if (query.exec(pragma))
            continue;
        // A read-only file keeps the journal mode it has and can be read in any.
        if (pragma == journalMode && isReadOnlyError(query.lastError()))
            continue;
        fail(pragma + u" -> "_s + sqlErrorText(query.lastError()));
        qCritical("PRAGMA failed: %s", qUtf8Printable(m_lastError));
        return false;
    }
    return true;
}

bool DatabaseManager::ensureSchema()
{
    const std::optional<qint64> version = readUserVersion();
    if (!version) {
        qCritical("Cannot read the database version: %s", qUtf8Printable(m_lastError));
        return false;
    }
    m_readOnly = databaseIsReadOnly(*version);
    if (m_readOnly)
        qWarning("The database file is read-only: nothing can be saved");
    if (*version > currentVersion)
        qWarning("The database has version %lld, newer than this program's %d", *version,
            currentVersion);
    // The script would give an older file the newest version without its newest columns.
    if (*version == 0)
        return createSchema();
    return *version >= currentVersion || migrate(*version);
}

bool DatabaseManager::createSchema()
{
    QString script;
    if (!readResource(u":/sql/schema.sql"_s, &script))
        return fail(u"无法读取内置建表脚本 :/sql/schema.sql"_s);
    if (!executeScript(script))
        return false;
    qInfo("Schema created at %s (user_version=%lld)", qUtf8Printable(AppPaths::databasePath()),
        userVersion());
    return true;
}

bool DatabaseManager::migrate(qint64 fromVersion)
{
    if (!copyBeforeMigration(fromVersion))
        return false;
    if (fromVersion < 2 && !runMigrationScript(2, u":/sql/migrate_1_2.sql"_s))
        return false;
    return migrateToV3();
}

bool DatabaseManager::copyBeforeMigration(qint64 fromVersion)
{
    if (m_readOnly)
        return fail(u"数据库文件为只读，无法升级"_s);
    const QString path = migrationCopyPath(fromVersion);
    QString error;
    if (!copyDatabase(path, &error)) {
        fail(u"升级前无法备份数据库，数据库未作任何更改：%1"_s.arg(error));
        qCritical("Copy before the migration failed: %s", qUtf8Printable(error));
        return false;
    }
    qInfo("Copied the database to %s before its migration", qUtf8Printable(path));
    return true;
}

bool DatabaseManager::runMigrationScript(int targetVersion, const QString& resourcePath)
{
    QString script;
    if (!readResource(resourcePath, &script)) {
        fail(u"无法读取迁移脚本 %1"_s.arg(resourcePath));
        qCritical("%s", qUtf8Printable(m_lastError));
        return false;
    }
    if (!executeScript(script)) {
        qCritical("Migration to v%d failed: %s", targetVersion, qUtf8Printable(m_lastError));
        return false;
    }
    qInfo("Schema migrated: user_version -> %d", targetVersion);
    return userVersion() == targetVersion;
}

bool DatabaseManager::migrateToV3()
{
    // An earlier attempt may have stopped between the column and the version.
    if (hasColumn(u"company_profile"_s, u"theme_mode"_s))
        qInfo("Migration v3: theme_mode already present, only bumping user_version");
    else if (!addThemeMode())
        return false;

    QSqlQuery query(Connection::current());
    if (!query.exec(u"PRAGMA user_version = 3"_s))
        return fail(query.lastError().text());
    qInfo("Schema migrated: user_version -> 3");
    return userVersion() == currentVersion;
}

bool DatabaseManager::addThemeMode()
{
    DbTransaction transaction;
    if (!transaction.isOpen())
        return fail(transaction.lastError());
    QSqlQuery query(Connection::current());
    if (!query.exec(u"ALTER TABLE company_profile ADD COLUMN theme_mode TEXT NOT NULL DEFAULT "
                    "'light'"_s)) {
        fail(query.lastError().text());
        qCritical("Migration v3 ALTER failed: %s", qUtf8Printable(m_lastError));
        return false;
    }
    if (!transaction.commit())
        return fail(transaction.lastError());
    qInfo("Migration v3: column theme_mode added");
    return true;
}

// All or nothing.
bool DatabaseManager::executeScript(const QString& text)
{
    DbTransaction transaction;
    if (!transaction.isOpen())
        return fail(transaction.lastError());
    for (const QString& piece : SqlScript::splitStatements(text)) {
        const QString statement = piece.trimmed();
        // The driver takes a statement of comments alone for a failure.
        if (SqlScript::stripLineComments(statement).trimmed().isEmpty())
            continue;
        QSqlQuery query(Connection::current());
        if (query.exec(statement))
            continue;
        fail(query.lastError().text());
        qCritical("Schema statement failed: %s | SQL: %.120s", qUtf8Printable(m_lastError),
            qUtf8Printable(statement.simplified()));
        return false;
    }
    return transaction.commit() || fail(transaction.lastError());
}

bool DatabaseManager::verifyIntegrity()
{
    QString detail;
    if (integrityCheck(&detail))
        return true;
    fail(u"数据库完整性检查失败：%1"_s.arg(detail));
    qCritical("%s", qUtf8Printable(m_lastError));
    return false;
}

// A slow ledger is better than none: a failure is only logged.
void DatabaseManager::preparePlanner() const
{
    QString error;
    if (!m_readOnly && !PlannerStatistics::ensure(&error))
        qWarning("Planner statistics could not be written: %s", qUtf8Printable(error));
}

std::optional<qint64> DatabaseManager::readUserVersion()
{
    QSqlQuery query(Connection::current());
    if (query.exec(u"PRAGMA user_version"_s) && query.next())
        return query.value(0).toLongLong();
    m_lastError = query.lastError().text();
    return std::nullopt;
}

bool DatabaseManager::fail(const QString& reason)
{
    m_lastError = reason;
    return false;
}
