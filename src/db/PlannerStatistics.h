#pragma once

#include <QString>

/// What SQLite's query planner is told about the size of `entity_links`.
///
/// Without statistics the planner expects few vouchers and answers the voucher count of every
/// ledger row by walking all voucher links, which makes the ledger quadratic: 10,000 entries take
/// seconds instead of milliseconds. Fixed rows in `sqlite_stat1` make it look links up by both
/// columns of their target, on an empty ledger too. Other tables stay without statistics: with
/// them the planner picks worse indexes for the ledger's filters.
namespace PlannerStatistics {

/// Makes sure that the rows are there and in force on the open connection. Writes nothing when
/// they are there already. False leaves the database as it was, with the reason in `error`.
[[nodiscard]] bool ensure(QString* error);

} // namespace PlannerStatistics
