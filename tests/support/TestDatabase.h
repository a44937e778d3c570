#pragma once

#include <QString>
#include <QStringList>

/// SQL straight on a database, past the stores.
namespace TestDatabase {

/// Runs the statements on the program's connection; the first error, or an empty text.
QString run(const QStringList& statements);

/// From now on the table takes no changes of its rows; announces the log line of one refusal.
[[nodiscard]] bool refuseUpdates(const QString& table);

/// As above for any event, as in "DELETE ON vouchers".
[[nodiscard]] bool refuse(const QString& event);

/// Lets every commit fail that comes after such an event; announces nothing.
[[nodiscard]] bool refuseCommitAfter(const QString& event);

/// The rows of a query on the program's connection: cells joined by "|", NULL as "∅"; a failed
/// query gives its error as the only row.
QStringList rows(const QString& sql);

/// The first row of a query, an empty text when there is none.
QString row(const QString& sql);

/// Everything that the program's database holds, the layout of its tables included.
QStringList dump();

/// Makes or changes a database file on a connection of its own, in a script's statements; the
/// first error, or an empty text.
QString runOnFile(const QString& path, const QString& script);

/// The first row of a query on a file, as `row` gives it.
QString rowOfFile(const QString& path, const QString& sql);

} // namespace TestDatabase
