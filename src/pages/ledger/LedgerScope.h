#pragma once

#include "db/Transaction.h"
#include "pages/PageId.h"
#include "services/figures/Period.h"

#include <QSet>

#include <optional>

/// What another page wants the ledger to show, read from the parameters of its request: "risk"
/// and "category" (codes), "projectId", "dateFrom" and "dateTo" (dates), "txIds" (the only entries
/// to show), "txId" (the entry to select) and "all" (true: every entry, whatever was filtered
/// before). What is missing does not restrict.
struct LedgerScope {
    std::optional<RiskLevel> risk;
    std::optional<Category> category;
    DateRange range;
    qint64 projectId = 0;
    QSet<qint64> entryIds;
    qint64 selectedId = 0;
    bool all = false;

    /// Unknown codes and numbers that no row has count as missing.
    static LedgerScope of(const NavParams& params);

    /// Whether anything but the selection was asked for.
    bool restricts() const;

    /// The entries that belong to the scope beyond what a search filters.
    QList<Transaction> chosenOf(QList<Transaction> entries) const;
};
