#pragma once

#include "db/CompanyProfile.h"
#include "db/Transaction.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>

/// The rules that mark entries which look like a mixing of company and private property. Pure
/// functions: what they decide depends on their arguments alone.
namespace RiskRules {

struct RiskResult {
    RiskLevel level = RiskLevel::Normal;
    QStringList reasons; // Chinese, one per rule that fired, in the order of the rules

    bool operator==(const RiskResult&) const = default;
};

/// What an entry cannot tell of itself.
struct Circumstances {
    int voucherCount = 0;
    bool inFrequentGroup = false;
    int groupSize = 0; // of the largest group that it belongs to
    qint64 largeAmountFen = 0;
    int windowDays = 0;
};

/// The level and the reasons of one entry. The most severe rule that fired gives the level; the
/// reasons of all of them are kept.
[[nodiscard]] RiskResult evaluate(const Transaction& entry, const Circumstances& circumstances);

using Flow = DatedFlow;

/// The frequency thresholds of a profile; what is not above 0 gives way to 30 days and 3 flows.
struct Frequency {
    int windowDays = 30;
    int count = 3;

    bool operator==(const Frequency&) const = default;
};
[[nodiscard]] Frequency frequencyOf(const CompanyProfile& profile);

/// The flows that belong to a group of at least `count` within `windowDays` calendar days, with
/// the size of their largest group. A group ends with one of its flows, on that flow's own day.
/// `flows` are sorted by date, then id; those in `covered` count for the size of a group but are
/// never part of the result. Flows without a valid date belong to no group. Linear in the number of
/// flows.
[[nodiscard]] QHash<qint64, int> frequentGroups(
    const QList<Flow>& flows, const QSet<qint64>& covered, const Frequency& frequency);

} // namespace RiskRules
