#pragma once

#include "services/vouchers/VoucherService.h"
#include "support/FileSizeLimit.h"
#include "support/Warnings.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What the tests of the archive work on.
namespace VoucherSample {

using ::expectWarnings;
using FullDisk = FileSizeLimit;

/// Writes a file outside of the archive and returns its path; empty when that failed.
QString makeSource(const QString& name, const QByteArray& content = "receipt");

/// Adds ledger entries 1 to `count`, each of which is flagged as long as it has no voucher.
bool addEntries(int count);

/// Archives a file under its own name, linked to the entries; the voucher's number, 0 on failure.
qint64 archived(const QString& name, const QList<qint64>& transactionIds = {});

/// Where the only voucher's copy lies.
QString copyPath();

/// Rows, links and files of the archive, such as "2 vouchers, 3 links, 2 files".
QString inventory();

/// The levels of the entries in the order of their numbers.
QString levels();

/// Refuses such changes: "INSERT ON vouchers"; with ROLLBACK all that was open is lost.
QStringList refusing(const QString& event, const QString& how = QStringLiteral("ABORT"));

/// Makes every commit fail that comes after the writing of such a row: "INSERT ON vouchers".
QStringList failingCommit(const QString& event);

} // namespace VoucherSample
