#pragma once

#include "db/Voucher.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// Vouchers with real files in the archive. Whatever cannot be stored gives 0, which no row has.
namespace ArchiveSample {

/// Archives a file of these bytes, of the given day of January 2026.
qint64 add(const QString& name, int day, qint64 projectId = 0, const QList<qint64>& entries = {},
    const QByteArray& content = {}, const QString& extension = QStringLiteral("png"));

/// A file of these bytes that is not archived yet; its path.
QString source(const QString& name, const QByteArray& bytes);

/// A JPEG picture of these pixels.
QByteArray jpeg(int width, int height);
/// One of 400 by 200 pixels whose EXIF block says that the camera was held upright.
QByteArray turnedJpeg();
/// A picture's head that promises 30,000 by 30,000 pixels.
QByteArray hugeJpeg();
/// A PDF file of A4 pages.
QByteArray pdf(int pages);

} // namespace ArchiveSample
