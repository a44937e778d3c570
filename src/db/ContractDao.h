#pragma once

#include "db/BaseDao.h"
#include "db/Contract.h"

#include <QHash>

/// Table `contracts`.
class ContractDao final : public BaseDao {
public:
    /// Signed last first.
    QList<Contract> listByProject(qint64 projectId);
    std::optional<Contract> findById(qint64 id);

    /// Stores a new contract and sets its id, and its code where that is blank.
    [[nodiscard]] bool insert(Contract& contract);
    [[nodiscard]] bool update(const Contract& contract);
    /// Removes the contract; links to it go with it.
    [[nodiscard]] bool remove(qint64 id);

    /// How many vouchers are tied to each contract of the project; those without any are left out.
    /// Nothing when it cannot be read.
    std::optional<QHash<qint64, int>> voucherCounts(qint64 projectId);

    /// The next free code of this year over all projects, "HT-2026-0001".
    QString nextCode();

private:
    static Bindings bindingsOf(const Contract& contract);
};
