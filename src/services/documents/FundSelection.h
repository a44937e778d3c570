#pragma once

#include "db/Transaction.h"

#include <QList>
#include <QSet>

/// Which of the wanted entries one fund decision can cover: it covers one direction only.
struct FundSelection {
    Direction direction = Direction::In; // of the first wanted entry that is there
    QList<qint64> ids; // of that direction, each once
    QList<Transaction> otherDirection; // left out
    QList<qint64> unknown; // left out: no such entry
};

/// The choice of ledger entries for a fund decision. Pure.
namespace FundSelections {

/// Sorts out the wanted entries; the first that is there gives the direction.
FundSelection choose(const QList<qint64>& wanted, const QList<Transaction>& ledger);

/// What was left out and why, in Chinese; empty when nothing was.
QString leftOutText(const FundSelection& selection);

/// A warning, in Chinese, that some of the chosen entries moved no money between company and
/// owner, so that a decision on them would be a false one; empty when all may have.
QString foreignText(const QList<Transaction>& chosen);

/// The ticked entries of a direction as a decision lists them: oldest first.
QList<Transaction> inOrder(
    const QList<Transaction>& ledger, const QSet<qint64>& ticked, Direction direction);

} // namespace FundSelections
