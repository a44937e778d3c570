#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// Data that name the side they come from, so that a mixture of two shows.
namespace BackupSample {

/// Fills the open, empty database and the voucher folder with two entries, a document, and
/// vouchers in odd places: hidden, in sub-folders, with blanks and quotes. False at any failure.
bool fill(const QString& side);

/// Writes a file, its folders included.
bool put(const QString& path, const QByteArray& bytes);

/// Everything below a folder: files with their bytes, folders with a slash and "", links with
/// "-> " and where they lead.
QMap<QString, QByteArray> tree(const QString& folder);

/// What the open database and the voucher folder hold, in one line: "旧" or "新" or whatever the
/// side was called, once for each of them, and a digest of the voucher folder.
QString signature();

/// The names in the data directory beside those that belong there.
QStringList strangersInDataDir();

} // namespace BackupSample
