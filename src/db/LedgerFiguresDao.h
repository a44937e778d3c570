#pragma once

#include "db/BaseDao.h"
#include "db/LedgerFigures.h"

/// Sums and counts over the ledger for dashboard and reports; reads only. Invalid dates leave a
/// range open. A failed statement gives nothing, or 0, and a reason in `lastError`.
class LedgerFiguresDao final : public BaseDao {
public:
    /// By whose account moved the money and by direction; pairs without entries are left out.
    QList<AccountDirectionSum> accountSums(QDate from, QDate to);
    /// By month, oldest first; months without entries are left out.
    QList<MonthSum> monthSums(QDate from, QDate to);
    /// The owner's balance (股东往来): what the owner paid in minus what the company paid out in
    /// the two categories of transfers with the owner. Above 0 the company owes the owner, below
    /// 0 the owner owes the company. Reimbursements settle an expense and do not count.
    qint64 ownerBalanceFen(QDate from, QDate to);
    /// What each fund decision covers; those whose entries are all gone are left out.
    QList<CoveredSum> fundDecisionSums();
    /// Entries of at least this amount that no voucher is linked to, newest first.
    QList<qint64> largeEntriesWithoutVoucher(qint64 thresholdFen);
    /// The number of entries.
    qint64 entryCount(QDate from, QDate to);
};
