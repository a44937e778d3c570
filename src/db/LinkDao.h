#pragma once

#include "db/BaseDao.h"
#include "db/EntityLink.h"

#include <QSet>

/// Table `entity_links`, and the one place that knows which pairs may be linked: a voucher to
/// anything, a document to a project or a ledger entry.
class LinkDao final : public BaseDao {
public:
    /// Links two rows; linking them again changes nothing and succeeds. Refuses other pairs and
    /// ids that no row can have.
    [[nodiscard]] bool link(
        SourceType sourceType, qint64 sourceId, TargetType targetType, qint64 targetId);
    [[nodiscard]] bool unlink(
        SourceType sourceType, qint64 sourceId, TargetType targetType, qint64 targetId);
    [[nodiscard]] bool unlinkAllFromSource(SourceType sourceType, qint64 sourceId);

    /// In the order in which they were made.
    QList<EntityLink> linksBySource(SourceType sourceType, qint64 sourceId);
    QList<EntityLink> linksByTarget(TargetType targetType, qint64 targetId);
    /// What the vouchers are linked to, of one kind, in the order in which the links were made.
    /// Nothing when it cannot be read: a voucher must not seem to be unlinked.
    std::optional<QList<VoucherTarget>> voucherTargets(
        TargetType kind, const QList<qint64>& voucherIds);

    int countVouchersFor(TargetType targetType, qint64 targetId);
    /// The ledger entries that a fund decision covers.
    QSet<qint64> fundDecisionTransactionIds();
    int countFundDecisionsFor(qint64 transactionId);

private:
    static Bindings pairBindings(
        SourceType sourceType, qint64 sourceId, TargetType targetType, qint64 targetId);
};
