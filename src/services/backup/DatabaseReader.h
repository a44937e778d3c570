#pragma once

#include <QDate>
#include <QString>

#include <functional>
#include <optional>

/// Looks into a database file that is not the program's own, on a connection of its own. The file
/// is taken as it lies: nothing is written, no log is created beside it, and one that lies there
/// is not read, since a backup's database is whole by itself.
class DatabaseReader final {
public:
    explicit DatabaseReader(const QString& path);
    ~DatabaseReader();
    DatabaseReader(const DatabaseReader&) = delete;
    DatabaseReader& operator=(const DatabaseReader&) = delete;

    /// Why the file cannot serve as the program's database, in Chinese; nothing when it is sound
    /// and holds a company profile of version 1 or later, from version 3 on with every table.
    /// Reads the whole file.
    std::optional<QString> problem() const;

    /// The schema version; 0 when it cannot be read.
    qint64 version() const;
    QString companyName() const;
    /// The stored form of the start-up password; nothing when none is asked for.
    std::optional<QString> passwordHash() const;
    /// The number of rows; nothing when the table cannot be read.
    std::optional<int> rowCount(const QString& table) const;
    /// The number of vouchers for whose stored path the test holds; nothing when the table cannot
    /// be read. Only for a database without `problem`: a view in the table's place may never end.
    std::optional<int> vouchersThat(const std::function<bool(const QString& path)>& test) const;
    /// The latest date in the ledger; invalid when it has no entries.
    QDate newestEntryDate() const;

private:
    bool viewsPoseAsTables() const;
    qint64 size() const; // bytes, as the file itself counts its pages
    std::optional<QString> firstCell(const QString& sql, QString* error = nullptr) const;

    QString m_path;
};
