#pragma once

#include "db/RecordReader.h"

#include <QDate>
#include <QList>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <optional>
#include <span>

/// Base of the stores: runs their statements on the program's connection, logs those that fail
/// and keeps the reason. A store holds no query and no row between calls.
class BaseDao {
public:
    /// The reason of the last failure; successes leave it as it is.
    QString lastError() const { return m_lastError; }

protected:
    struct Binding {
        QString placeholder;
        QVariant value;
    };
    using Bindings = QList<Binding>;

    /// The conditions of a search that were asked for, each with its value.
    struct Conditions {
        QString sql;
        Bindings bindings;

        void add(const QString& clause, const QString& placeholder, const QVariant& value);
    };

    /// Restricts `trans_date` to a range of days; invalid ones leave it open.
    static Conditions dateRange(QDate from, QDate to);

    BaseDao() = default;
    ~BaseDao() = default;

    /// A query on the program's connection, reading forward only.
    static QSqlQuery newQuery();

    /// False, logged and kept when the statement is not valid.
    [[nodiscard]] bool prepare(QSqlQuery& query, const QString& sql);
    /// Runs a query that was prepared successfully.
    [[nodiscard]] bool exec(QSqlQuery& query);
    /// Prepares, binds and runs.
    [[nodiscard]] bool run(QSqlQuery& query, const QString& sql, const Bindings& bindings);

    /// Runs a statement that yields no rows.
    [[nodiscard]] bool write(const QString& sql, const Bindings& bindings);
    /// Runs an INSERT; the new row's number goes to `id`, which a failure leaves alone.
    [[nodiscard]] bool insertRow(const QString& sql, const Bindings& bindings, qint64& id);

    /// The number in the first cell of the first row; nothing when the statement failed.
    std::optional<qint64> readNumber(const QString& sql, const Bindings& bindings);

    /// The same for a COUNT; 0 when the statement failed.
    int readCount(const QString& sql, const Bindings& bindings);
    /// The next code of this beginning. The statement takes `:pattern` and yields the sequence;
    /// when it fails numbering starts at 1, and the UNIQUE column refuses a code that is taken.
    QString nextSerialCode(const QString& sql, const QString& prefix);

    /// Whether reading ended because there were no more rows. A statement may also fail after its
    /// first rows; that is logged and kept.
    [[nodiscard]] bool readToTheEnd(const QSqlQuery& query);

    /// All rows; none when the statement failed.
    template <typename Record>
    QList<Record> readAll(
        std::span<const Column<Record>> columns, const QString& sql, const Bindings& bindings)
    {
        QList<Record> records;
        QSqlQuery query = newQuery();
        if (!run(query, sql, bindings))
            return records;
        const RecordReader<Record> reader(columns, query);
        while (query.next())
            reader.fill(query, records.emplaceBack());
        // Part of a ledger would look like the whole of it.
        if (!readToTheEnd(query))
            records.clear();
        return records;
    }

    /// The first row; nothing when there is none or the statement failed.
    template <typename Record>
    std::optional<Record> readOne(
        std::span<const Column<Record>> columns, const QString& sql, const Bindings& bindings)
    {
        QSqlQuery query = newQuery();
        if (!run(query, sql, bindings) || !query.next())
            return std::nullopt;
        Record record;
        RecordReader<Record>(columns, query).fill(query, record);
        return record;
    }

    /// The text for a NOT NULL column, where a null text would be refused.
    static QVariant notNull(const QString& text);
    /// NULL for a blank text, otherwise the text unchanged.
    static QVariant nullIfEmpty(const QString& text);
    /// NULL for an unset date, which a NOT NULL column refuses.
    static QVariant dateOrNull(QDate date);
    /// A keyword as a LIKE pattern; its own wildcards stay wildcards.
    static QString containing(const QString& keyword);
    template <typename Value> static QVariant orNull(const std::optional<Value>& value)
    {
        return value ? QVariant(*value) : QVariant();
    }

    template <typename Enum> static QVariant codeOrNull(const std::optional<Enum>& value)
    {
        return value ? QVariant(codeOf(*value)) : QVariant();
    }

    /// Keeps the reason; returns false for the caller to pass on.
    bool fail(const QString& reason);

private:
    bool failStatement(const QString& error, const QString& sql);

    QString m_lastError;
};
