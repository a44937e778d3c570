#pragma once

#include "db/Project.h"
#include "db/Transaction.h"
#include "services/FormProblem.h"

#include <optional>

/// What an entry of the ledger must hold before it can be saved, and how its project is named.
namespace EntryRules {

enum class Field { Date, Amount, Summary, Counterparty, Note };

inline constexpr qint64 largestAmountFen = 9'999'999'999;
inline constexpr int shortestSummary = 2; // characters, as the limits below
inline constexpr int longestSummary = 64;
inline constexpr int longestCounterparty = 64;
inline constexpr int longestNote = 500;
inline constexpr int shortestReview = 2;
inline constexpr int longestReview = 500;

/// The first field that keeps the entry from being saved; nothing when it may be. Texts are
/// looked at without the white space around them.
std::optional<FormProblem<Field>> firstProblem(const Transaction& entry);

/// The entry as it is stored: texts trimmed, names and summaries on one line.
Transaction normalized(Transaction entry);

/// A new entry with the values of another one, dated today: nothing of its identity, its risk or
/// its history.
Transaction copyOf(const Transaction& pattern, QDate today);

/// Why a manual review cannot be saved with this explanation, in Chinese; empty when it can.
QString reviewProblem(const QString& note);

/// Whether new entries may choose the project.
bool isOffered(const Project& project);

/// "P-2026-0001 展厅设计"; one that is no longer offered is told to be history.
QString projectText(const Project& project);

} // namespace EntryRules
