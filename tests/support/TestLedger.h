#pragma once

#include "db/Project.h"
#include "db/Transaction.h"

/// Small ledgers for tests. Whatever cannot be stored gives 0, which no row has.
namespace TestLedger {

/// A name that every place must show as it stands.
inline const QString hostileName = QStringLiteral("<b>%1&\"");

/// Stores the names of company (杭州山岚设计有限公司) and owner (林岚); false on failure.
[[nodiscard]] bool storeCompany();

/// Stores a project; its id.
qint64 addProject(const QString& name, const QString& client = QStringLiteral("客户"),
    ProjectStatus status = ProjectStatus::Ongoing);

/// Stores a contract of the project; its id.
qint64 addContract(
    qint64 projectId, const QString& name, const QString& date = QStringLiteral("2026-02-03"));

/// An entry of the company's account; 100.00 yuan unless said otherwise.
Transaction entry(const QString& date, Category category, Direction direction, qint64 fen = 10'000);

/// Stores the entry; its id.
qint64 add(Transaction entry);

/// Stores so many like entries at once, of the usual amount, without evaluating them; the error,
/// or an empty text.
QString addMany(int count);

/// Stores a fund decision over the entries, payments out of the company; its id.
qint64 addFundDecision(const QList<qint64>& entryIds,
    const QString& docDate = QStringLiteral("2025-01-01"), const QString& settleDate = {});

/// Stores a voucher linked to the entry (to nothing when 0); its id.
qint64 addVoucher(qint64 entryId);

/// What the evaluation found for an entry: "level|reason;reason", the reasons by the name of
/// their rule, as in "high|R1-1;R3" or "medium|R2(4)" with the size of the group.
QString autoRisk(qint64 entryId);

} // namespace TestLedger
