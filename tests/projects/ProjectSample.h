#pragma once

#include <QString>

/// What belongs to a project. Whatever cannot be stored gives 0, which no row has.
namespace ProjectSample {

/// An entry of 100.00 yuan received.
qint64 addEntry(qint64 projectId);
/// A voucher without a file, linked to the project.
qint64 addVoucher(qint64 projectId, const QString& name);

} // namespace ProjectSample
