#pragma once

#include "db/Transaction.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/// What records say of themselves: every record that the stress run writes carries a checksum of
/// its own fields and links in its note, so that half of one shows.
namespace StressFacts {

/// The note of an entry that has exactly these vouchers.
QString noteOf(const Transaction& entry, QList<qint64> voucherIds);
QList<qint64> vouchersOf(qint64 entryId);

/// The note of a voucher that is linked to exactly these entries.
QString linksNote(QList<qint64> entryIds);
QList<qint64> entriesOf(qint64 voucherId);

/// What the owner scans over a document's PDF.
QByteArray signedCopy();

QString digest(const QByteArray& bytes);

/// One line for all that a restore exchanges, without what an evaluation writes.
QString dataSignature();

/// The evaluation's result for every entry, in the order of their numbers.
QStringList levels();

/// Numbers of the rows that a query finds.
QList<qint64> ids(const QString& sql);

} // namespace StressFacts
