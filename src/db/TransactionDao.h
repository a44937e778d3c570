#pragma once

#include "db/BaseDao.h"
#include "db/LedgerLine.h"
#include "db/Transaction.h"

#include <functional>

/// The fund ledger, table `transactions`.
class TransactionDao final : public BaseDao {
public:
    /// Stores a new entry and sets its id. Risk fields are not written: a new entry is normal
    /// until it is evaluated.
    [[nodiscard]] bool insert(Transaction& entry);
    /// Writes everything except the risk fields.
    [[nodiscard]] bool update(const Transaction& entry);
    /// Removes the entry; links to it go with it.
    [[nodiscard]] bool remove(qint64 id);

    std::optional<Transaction> findById(qint64 id);
    /// Newest date first, within a date the entry stored last.
    QList<Transaction> search(const TransactionFilter& filter);
    /// The entries of a search in its order, one after the other and without records of them. A
    /// line is gone after its visit. False when the statement failed, maybe after some lines.
    [[nodiscard]] bool visitLines(
        const TransactionFilter& filter, const std::function<void(const LedgerLine&)>& visit);
    /// Every entry in the order of `search`, with only those fields filled that the risk rules
    /// look at: id, direction, amount, owner's account, category, note and the voucher count.
    QList<Transaction> entriesToEvaluate();
    /// Entries between company and owner, oldest first.
    QList<Transaction> listShareholderFlows();
    /// The same entries, of which only number and date are read.
    QList<DatedFlow> shareholderFlowDates();
    /// The same entries, with only those fields filled that decide what is left to do about them:
    /// id, date, direction, category, amount and the override.
    QList<Transaction> shareholderFlowsToReview();
    /// Every counterparty once, the one registered last first.
    QList<Counterparty> knownCounterparties();

    ProjectTotals projectTotals(qint64 projectId);
    /// Largest turnover first; invalid dates leave the range open.
    QList<CategoryStat> categoryStats(QDate from, QDate to);
    RiskLevelCounts riskLevelCounts(QDate from, QDate to);

    /// Notes in the ledger that its levels are behind, until each entry is evaluated. Belongs into
    /// the transaction of a change that the evaluation follows: whatever keeps that from being
    /// done, the note stays. A new entry is one by itself.
    [[nodiscard]] bool setEvaluationDue();
    /// True as well when it cannot be found out.
    bool isEvaluationDue();

    /// Stores an automatic level with its reasons; an override stays in force above it.
    [[nodiscard]] bool updateAutoRisk(qint64 id, RiskLevel level, const QStringList& reasons);
    /// The same for many entries with one statement. Stops at the first that cannot be written;
    /// the number of those written before it, which is also its place in the list.
    [[nodiscard]] qsizetype updateAutoRisks(const QList<AutoRisk>& results);
    /// Sets the level in force by hand, or gives the automatic one back when absent.
    [[nodiscard]] bool setManualOverride(
        qint64 id, std::optional<RiskLevel> level, const QString& note);

    /// The statement that `search` runs, apart for the examination of its query plan.
    static QString searchStatement(const TransactionFilter& filter);

private:
    static QString searchStatement(QStringView columns, const TransactionFilter& filter);
    static Bindings searchBindings(const TransactionFilter& filter);
    static Conditions conditionsOf(const TransactionFilter& filter);
    static Bindings bindingsOf(const Transaction& entry);
};
