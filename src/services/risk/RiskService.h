#pragma once

#include "services/risk/RiskRules.h"

#include <optional>

/// Applies the risk rules to the ledger. Keeps nothing between calls: every call reads profile,
/// flows, decisions and entries afresh.
class RiskService final {
public:
    /// Level and reasons that an entry would get if it were saved now, as far as it can be judged
    /// alone: whether it belongs to a group of frequent transfers only the full evaluation knows.
    [[nodiscard]] RiskRules::RiskResult evaluateInstant(const Transaction& entry, int voucherCount);

    /// Re-evaluates every entry of the ledger and stores the automatic level and its reasons; a
    /// manual override stays in force above them. Works inside an open database transaction and
    /// outside one. Stops at the first entry that cannot be written; entries already written keep
    /// their new result. Failures are logged and leave the ledger behind.
    void reevaluateAll();

    /// Entries whose levels the last evaluation has not reached; the next one, that of the next
    /// start at the latest, mends it.
    [[nodiscard]] static bool isBehind();

    /// Stores the profile with its thresholds, and that all levels are behind them. The reason in
    /// the words of SQLite when that fails, and nothing is changed.
    [[nodiscard]] static std::optional<QString> storeProfile(const CompanyProfile& profile);

    /// The ledger is so long that evaluating all of it, so many times, is worth a notice while it
    /// runs.
    [[nodiscard]] static bool takesNoticeablyLong(qsizetype evaluations = 1);
};
