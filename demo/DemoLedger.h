#pragma once

#include "db/Transaction.h"
#include "DemoSize.h"
#include "Problem.h"

#include <QList>

class DemoCompany;

/// An entry of the demo's ledger, with what the later steps need to know about it.
struct DemoEntry {
    Transaction entry;
    QString mark; // of entries that documents and overrides pick out
    QList<VoucherType> vouchers; // what the owner keeps of it
};

/// The ledger of the demo: the payments of every month, the income of the projects, the money
/// that passes between owner and company, and cases for each risk rule. Always the same.
class DemoLedger final {
public:
    DemoLedger(const DemoCompany& company, DemoSize size);

    /// Stores the entries, each on the evening of its day.
    [[nodiscard]] Problem store();

    /// Sets two levels by hand, as an owner does who knows more than the rules.
    [[nodiscard]] Problem review() const;

    /// By day; stored ones with their id.
    const QList<DemoEntry>& entries() const { return m_entries; }

    QList<qint64> idsMarked(const QString& mark) const;

    /// What the rules and the reviews did not bring about although they should have.
    [[nodiscard]] static Problem checkRisks();

private:
    QList<DemoEntry> m_entries;
};
