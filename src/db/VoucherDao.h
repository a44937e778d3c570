#pragma once

#include "db/BaseDao.h"
#include "db/Voucher.h"

/// The archive's descriptions, table `vouchers`. The files themselves are handled by the voucher
/// service.
class VoucherDao final : public BaseDao {
public:
    /// Latest voucher date first, within a date the one stored last.
    QList<Voucher> search(const VoucherFilter& filter);
    /// Those linked to a contract itself, in the same order.
    QList<Voucher> listByContract(qint64 contractId);
    std::optional<Voucher> findById(qint64 id);

    int countAll();
    /// Those without a link of any kind.
    int countUnlinked();
    /// Whether a file of this content is archived; false when it cannot be found out.
    bool existsBySha256(const QString& hash);
    /// Whether a row names this file as its copy; true when it cannot be found out, because a file
    /// without a row is what may be removed.
    bool isFileInUse(const QString& storedPath);

    /// Stores a new voucher and sets its id.
    [[nodiscard]] bool insert(Voucher& voucher);
    /// Writes name, type, date and note: the file of a stored voucher never changes.
    [[nodiscard]] bool update(const Voucher& voucher);
    /// Removes the row; its links go with it.
    [[nodiscard]] bool remove(qint64 id);

private:
    static Conditions conditionsOf(const VoucherFilter& filter);
};
