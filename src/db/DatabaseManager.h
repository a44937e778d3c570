#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Owns the program's one SQLite connection, Qt's default one, on which all stores work. The
/// single instance is used from the window's thread only.
class DatabaseManager final {
public:
    static DatabaseManager& instance();
    DatabaseManager(const DatabaseManager&) = delete;
    DatabaseManager& operator=(const DatabaseManager&) = delete;

    /// Opens the database file, creates the schema in a new one, brings an older one up to date
    /// after copying it into the backups folder, and checks its integrity. On false `lastError()`
    /// says why; a file that could not be read or brought up to date keeps its records.
    [[nodiscard]] bool open();

    /// Closes the connection and removes it, open transactions included (they are rolled back).
    /// Harmless when nothing is open.
    void close();

    /// True when the open file can be read but not written.
    bool isReadOnly() const { return m_readOnly; }

    /// The reason of the last failure, for the user.
    QString lastError() const { return m_lastError; }

    /// The schema version of the file; 0 when it cannot be read.
    qint64 userVersion();

    /// SQLite's own check of the whole file; its first finding, or "ok", goes to `detail`.
    [[nodiscard]] bool integrityCheck(QString* detail = nullptr) const;

    /// Moves everything from the write-ahead log into the database file, so that the file alone
    /// is complete. True with a warning in the log when another reader kept part of it back.
    [[nodiscard]] bool checkpoint();

    /// The tables of the schema by name, without SQLite's own.
    QStringList tableNames() const;

private:
    DatabaseManager() = default;

    bool openConnection();
    bool applyPragmas();
    bool ensureSchema();
    bool createSchema();
    bool migrate(qint64 fromVersion);
    bool copyBeforeMigration(qint64 fromVersion);
    bool runMigrationScript(int targetVersion, const QString& resourcePath);
    bool migrateToV3();
    bool addThemeMode();
    bool executeScript(const QString& text);
    bool verifyIntegrity();
    void preparePlanner() const;
    std::optional<qint64> readUserVersion();
    bool fail(const QString& reason);

    bool m_readOnly = false;
    QString m_lastError;
};
