#pragma once

#include "core/Codes.h"

#include <QList>
#include <QString>

struct Contract;
struct Project;

/// Writes projects, contracts and the vouchers tied to them, all or nothing. Keeps no state.
namespace ProjectService {

struct Result {
    bool ok = false;
    QString message; // Chinese, when not ok
};

/// Stores a new project (id 0), which gets its id and, where it is blank, its code; or changes the
/// stored one.
[[nodiscard]] Result saveProject(Project& project);
/// The same for a contract.
[[nodiscard]] Result saveContract(Contract& contract);

/// Removes the project and its contracts with all links to them; vouchers and documents stay.
/// Refuses a project that has ledger entries.
[[nodiscard]] Result removeProject(qint64 projectId);
/// Removes the contract with all links to it; vouchers stay.
[[nodiscard]] Result removeContract(qint64 contractId);

/// Ties archived vouchers to a project or a contract.
[[nodiscard]] Result linkVouchers(
    TargetType target, qint64 targetId, const QList<qint64>& voucherIds);
/// Takes these ties away and no others.
[[nodiscard]] Result unlinkVouchers(
    TargetType target, qint64 targetId, const QList<qint64>& voucherIds);

} // namespace ProjectService
