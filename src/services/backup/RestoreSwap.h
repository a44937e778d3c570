#pragma once

#include <QString>

#include <optional>

/// Exchanges database and voucher folder of the data directory for new ones, so that a crash or
/// power failure at any moment leaves the old or the new data in place, never a mixture and never
/// none. The state lies on the disk alone, see RestoreSwap.cpp; the database must be closed from
/// `swapIn` until after `commit` or `takeBack`, except that the new one may be opened to try it.
///
/// Problems are Chinese texts for the user; nothing means success.
namespace RestoreSwap {

/// Where the new data are put together.
QString stagedDatabase();
QString stagedVouchers();

/// Clears what an earlier restore left behind. Belongs before the safety copy: what cannot be
/// cleared stops every attempt, and each would leave another copy. Live data that are not in order
/// are no problem here but one for `begin`, so that they are copied first.
[[nodiscard]] std::optional<QString> clearEarlier();

/// Clears what an earlier restore left behind and makes the folder for the new data.
[[nodiscard]] std::optional<QString> begin();

/// Removes the new data again. Only before `swapIn`.
void abandon();

/// Makes the new data durable, moves the old data aside and the new ones in. After a problem the
/// data directory is in between until `takeBack`.
[[nodiscard]] std::optional<QString> swapIn();

/// From here on the new data stay, and the old ones are removed. After a problem `takeBack` still
/// works.
[[nodiscard]] std::optional<QString> commit();

/// Puts the old data back in place wherever the exchange had come to; can be repeated. Removes
/// nothing but the new data, and those only beside a live database.
[[nodiscard]] std::optional<QString> takeBack();

/// An exchange that was neither committed nor taken back.
bool isUnfinished();

/// Removes new data that were never moved in and old data that were replaced for good, after
/// `takeBack`. What cannot be removed does no harm and is logged. A problem when the live database
/// is missing or empty and old data may be its only copy: these are left alone.
[[nodiscard]] std::optional<QString> clearLeftovers();

} // namespace RestoreSwap
