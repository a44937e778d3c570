#pragma once

#include "db/CompanyProfile.h"
#include "db/DocumentRecord.h"
#include "db/LedgerFigures.h"
#include "db/Transaction.h"

#include <QDate>
#include <QList>
#include <QSet>

namespace TodoList {

/// A fund decision with what it covers.
struct Decision {
    DocumentRecord document;
    CoveredSum covered;
};

/// What the rules look at. Nothing else decides, so equal facts give equal items.
struct Facts {
    QDate today;
    qint64 highRiskCount = 0;
    /// Entries between company and owner, oldest first, with the fields that the rules look at,
    /// and the decisions' coverage.
    QList<Transaction> ownerFlows;
    QSet<qint64> coveredIds;
    CompanyProfile profile; // the thresholds
    qint64 entriesLastYear = 0;
    bool hasAnnualDecisionLastYear = false;
    QDate latestIndependenceStatement; // invalid: none
    QList<Decision> fundDecisions;
    qint64 ownerBalanceFen = 0; // up to today; below 0 the owner owes the company
    qint64 unlinkedVouchers = 0;
    QList<qint64> largeEntriesWithoutVoucher; // newest first; none without a threshold
    /// Something could not be read, so that a missing item proves nothing.
    bool isIncomplete = false;
};

/// Reads the facts from the stores; what cannot be read counts as nothing and is remarked.
[[nodiscard]] Facts readFacts(QDate today);

} // namespace TodoList
