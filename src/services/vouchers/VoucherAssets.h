#pragma once

#include "db/Voucher.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// The folder of the archived files. A voucher's row names its copy by a path relative to the data
/// directory; what such a path leads to outside of the folder is never touched.
namespace VoucherAssets {

/// Where the copy of a stored path lies: absolute, with "/" separators, whether or not the file
/// exists. Empty, with a warning in the log, when the path leads out of the folder, by ".." or
/// through a symbolic link.
QString locate(const QString& storedPath);

/// The same, and empty too when no regular file lies there.
QString existingFile(const QString& storedPath);

/// Removes the copy of a stored path. A file that cannot be removed is only logged; one that is
/// gone already is not.
void remove(const QString& storedPath);

/// Files of the folder that no voucher's row names, by their stored paths: a crash between copying
/// and storing, or between deleting a row and its copy, leaves one. They do no harm, and none is
/// deleted. Empty when the rows cannot be read.
QStringList filesWithoutRow();

/// The vouchers whose copy is not in the folder: someone or something other than this program took
/// it away. Nothing when the rows cannot be read.
std::optional<QList<Voucher>> vouchersWithoutFile();

} // namespace VoucherAssets

/// A new copy in the archive's folder, under a name that no other file has. Removed again when it
/// is not kept, so that a failed import leaves no file without a row.
class VoucherCopy final {
public:
    /// Writes the content beside and renames it; `extension` without the dot.
    VoucherCopy(const QByteArray& content, const QString& extension);
    ~VoucherCopy();
    VoucherCopy(const VoucherCopy&) = delete;
    VoucherCopy& operator=(const VoucherCopy&) = delete;

    /// False when the copy could not be written, on a full disk for one; nothing is left then.
    bool isWritten() const { return m_written; }

    /// Relative to the data directory, as the voucher's row keeps it.
    QString storedPath() const { return m_storedPath; }

    void keep() { m_kept = true; }

private:
    QString m_storedPath;
    bool m_written = false;
    bool m_kept = false;
};
