#pragma once

#include "core/Codes.h"

#include <QList>
#include <QString>

#include <optional>

struct Transaction;

/// Writes entries of the ledger together with what belongs to them. Keeps no state.
namespace EntryService {

struct SaveResult {
    bool ok = false;
    qint64 entryId = 0; // of the stored entry, when ok
    QString message; // Chinese, when not ok
};

/// Stores a new entry, or changes the one of this id, and the links of its vouchers, all or
/// nothing. Re-evaluates the ledger once that is committed.
[[nodiscard]] SaveResult save(const Transaction& entry, const QList<qint64>& addedVoucherIds,
    const QList<qint64>& removedVoucherIds);

/// Removes an entry and its links. The reason when that fails, and nothing is changed; empty when
/// it is done. The ledger is behind until the caller has it evaluated.
[[nodiscard]] QString remove(qint64 entryId);

struct ReviewResult {
    bool ok = false;
    QString message; // Chinese, when not ok
};

/// Puts a person's judgement above the automatic level, or gives that back when there is none.
/// The explanation is required either way and is stored trimmed.
[[nodiscard]] ReviewResult review(
    qint64 entryId, std::optional<RiskLevel> level, const QString& note);

} // namespace EntryService
