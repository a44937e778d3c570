#pragma once

#include <QString>

/// Projects with what belongs to them. Whatever cannot be stored gives 0, which no row has.
namespace ProjectSample {

/// A name that every place must show as it stands.
inline const QString hostileName = QStringLiteral("<b>%1&\"");

qint64 addProject(const QString& name, const QString& client = QStringLiteral("客户"));
qint64 addContract(
    qint64 projectId, const QString& name, const QString& date = QStringLiteral("2026-02-03"));
/// An entry of 100.00 yuan received.
qint64 addEntry(qint64 projectId);
/// A voucher without a file, linked to the project.
qint64 addVoucher(qint64 projectId, const QString& name);

} // namespace ProjectSample
