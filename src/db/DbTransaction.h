#pragma once

#include <QString>

/// Holds a database transaction open for a scope: what is not committed when the scope is left
/// is rolled back. Inside another guard it is a savepoint, so that a service that writes several
/// rows can itself be part of a larger unit. Guards end in the reverse order of their beginning.
/// What fails to be committed or rolled back is logged.
class DbTransaction final {
public:
    DbTransaction();
    ~DbTransaction();
    DbTransaction(const DbTransaction&) = delete;
    DbTransaction& operator=(const DbTransaction&) = delete;

    /// False when the transaction could not begin, and again once it has ended.
    bool isOpen() const { return m_open; }

    /// Keeps what was written; for good only once the outermost guard has committed. After a
    /// failure everything since the beginning of this guard is rolled back.
    [[nodiscard]] bool commit();

    /// Takes back what was written; guards begun later end with it.
    void rollback();

    /// Why the transaction could not begin or be committed.
    QString lastError() const { return m_lastError; }

    /// Ends all guards without a statement: their connection is about to be closed, which rolls
    /// back whatever is open.
    static void abandonAll();

private:
    bool begin();
    bool run(const QString& sql);
    void end();

    bool m_open = false;
    DbTransaction* m_outer = nullptr;
    QString m_savepoint; // empty for the outermost guard
    QString m_lastError;
};
