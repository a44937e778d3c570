#pragma once

#include "db/CompanyProfile.h"
#include "db/Project.h"
#include "services/figures/LedgerStatistics.h"
#include "services/figures/TodoFacts.h"

#include <optional>

/// Everything that the dashboard shows, read in one go. What could not be read is nothing, never
/// 0; the stores log the reason.
namespace DashboardFigures {

inline constexpr int recentEntries = 8;
inline constexpr int shownProjects = 5;

struct Figures {
    QDate today;
    std::optional<CompanyProfile> profile;
    std::optional<qint64> entryCount; // of the whole ledger
    std::optional<qint64> voucherCount; // of the whole archive
    std::optional<LedgerStatistics::CardCounts> counts;
    std::optional<LedgerStatistics::AccountTotals> month; // this one
    std::optional<qint64> ownerBalanceFen; // of this year
    std::optional<QList<LedgerStatistics::MonthFigures>> months; // the last twelve
    std::optional<QList<Transaction>> recent; // newest first
    std::optional<QList<Project>> projects; // ongoing, the one changed last first
    TodoList::Facts todo;

    bool isIncomplete() const;
};

[[nodiscard]] Figures read(QDate today);

/// The entries behind the owner's balance of a range.
[[nodiscard]] QList<qint64> ownerBalanceEntries(
    const QList<Transaction>& ownerFlows, const DateRange& range);

/// Who owes whom by the owner's balance.
[[nodiscard]] QString ownerBalanceText(qint64 balanceFen);

/// How far a new company has come.
struct Steps {
    bool profile = false;
    bool entry = false;
    bool voucher = false;

    bool areDone() const { return profile && entry && voucher; }
};

/// Nothing when it could not be found out.
[[nodiscard]] std::optional<Steps> stepsOf(const Figures& figures);

} // namespace DashboardFigures
