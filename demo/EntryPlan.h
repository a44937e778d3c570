#pragma once

#include "DemoLedger.h"

#include <QRandomGenerator>

struct SmallRow;

/// Draws up the entries of the demo, from tables of what a small design studio earns and pays.
class EntryPlan final {
public:
    explicit EntryPlan(const DemoCompany& company);

    /// Sorted by day.
    QList<DemoEntry> between(QDate from, QDate to);

private:
    void addMonth(QDate month);
    void addSmallPayments(QDate month);
    void addSmallIncome(QDate month);
    void addProjectIncome();
    void addOwnerFlows();
    void addRiskCases();

    template <typename Rows> const auto& anyOf(const Rows& rows)
    {
        return *(rows.begin() + m_random.bounded(static_cast<int>(rows.size())));
    }
    qint64 varied(qint64 fen, qint64 spreadFen);
    DemoEntry& addSmall(QDate month, const SmallRow& row, Direction direction, Category category);
    DemoEntry& add(QDate day, QStringView summary, QStringView counterparty, Direction direction,
        Category category, qint64 fen);

    const DemoCompany& m_company;
    QRandomGenerator m_random { 20251218 };
    QList<DemoEntry> m_entries;
};
