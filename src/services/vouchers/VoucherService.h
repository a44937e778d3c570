#pragma once

#include "core/Codes.h"

#include <QDate>
#include <QList>
#include <QString>

/// A file that is to be archived.
struct VoucherImportRequest {
    QString sourcePath; // absolute
    QString name; // the file's own name without its extension when blank
    VoucherType voucherType = VoucherType::Other;
    QDate voucherDate; // today when unset
    QString note;
};

struct VoucherImportResult {
    bool ok = false;
    qint64 voucherId = 0; // 0 when not stored
    bool duplicate = false; // the same content was archived before
    QString storedPath; // relative to the data directory, when ok
    QString error; // Chinese, when not ok
};

/// What of an archived voucher can be changed: the file itself never is.
struct VoucherDescription {
    QString name; // as for an import when blank
    VoucherType voucherType = VoucherType::Other;
    QDate voucherDate; // today when unset
    QString note;
};

/// The archive of voucher files: each has a row with its links and a copy of the file in the
/// program's own folder, and neither ever exists alone. Every change re-evaluates the risks of the
/// ledger once per entry that gained or lost a voucher, before it is committed. Keeps no state.
namespace VoucherService {

/// Copies a file into the archive and links it to the project, when above 0, and to the entries.
/// A content that is archived already is stored again and reported as a duplicate; the flag also
/// goes to `duplicateOut` as soon as it is known, whatever happens afterwards. A failure leaves
/// neither row nor copy.
[[nodiscard]] VoucherImportResult importVoucher(const VoucherImportRequest& request,
    qint64 projectId, const QList<qint64>& transactionIds, bool* duplicateOut = nullptr);

/// The SHA-256 of a file in lower-case hexadecimal. Empty, with `okOut` false, when it cannot be
/// read to its end.
[[nodiscard]] QString computeSha256(const QString& path, bool* okOut = nullptr);

/// Rewrites the description and replaces all links, those to contracts included, by links to the
/// project, when above 0, and to the entries. On false nothing has changed and `errorOut` has the
/// reason in Chinese.
[[nodiscard]] bool updateVoucher(qint64 voucherId, const VoucherDescription& description,
    qint64 projectId, const QList<qint64>& transactionIds, QString* errorOut = nullptr);

/// Removes the row, its links and, once that is committed, the copy. On false nothing has changed
/// and `errorOut` has the reason in Chinese; a copy that stays behind is only logged. Inside an
/// outer transaction the copy goes before that one is decided.
[[nodiscard]] bool deleteVoucher(qint64 voucherId, QString* errorOut = nullptr);

} // namespace VoucherService
