#pragma once

#include "services/figures/TodoFacts.h"
#include "services/NoticeLevel.h"

#include <QList>
#include <QVariantMap>

/// What the owner should see to, found from what is stored.
namespace TodoList {

enum class Kind {
    HighRiskEntries,
    UncoveredTransfers,
    MissingAnnualDecision,
    MissingIndependenceStatement,
    UnsettledDecision,
    YearEndDebt,
    UnlinkedVouchers,
    LargeEntriesWithoutVoucher,
};

/// Where an item is dealt with.
enum class Target {
    Ledger, // "risk": a level's code, "category": a category's code, or "txIds"
    FundDecision, // "fund": true, "txIds"
    AnnualDecision, // "year": int
    IndependenceStatement, // "kind": the code of the kind
    DocumentArchive, // "docId": of the document to show
    Vouchers, // "linked": "none"
};

struct Item {
    Kind kind = Kind::HighRiskEntries;
    NoticeLevel severity = NoticeLevel::Info;
    QString title; // Chinese, plain
    QString text; // Chinese, plain: what is the matter and what to do
    Target target = Target::Ledger;
    QVariantMap parameters; // "txIds" is a list of 64-bit numbers
};

/// The items that the facts call for, the gravest first.
[[nodiscard]] QList<Item> itemsOf(const Facts& facts);

} // namespace TodoList
