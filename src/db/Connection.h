#pragma once

#include <QSqlDatabase>

namespace Connection {

/// The program's one connection, as it is: never opened by asking for it, invalid while the
/// database manager has none. Hold it for a statement, never in a member: a living handle keeps
/// the connection from being removed.
QSqlDatabase current();

/// The name under which Qt keeps it.
QString name();

} // namespace Connection
