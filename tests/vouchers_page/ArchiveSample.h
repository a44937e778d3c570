#pragma once

#include "db/Voucher.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// Vouchers with real files in the archive. Whatever cannot be stored gives 0, which no row has.
namespace ArchiveSample {

/// A name that every place must show as it stands.
inline const QString hostileName = QStringLiteral("<b>%1&\"");

qint64 addProject(const QString& name);

/// Archives a file of these bytes, of the given day of January 2026.
qint64 add(const QString& name, int day, qint64 projectId = 0, const QList<qint64>& entries = {},
    const QByteArray& content = {}, const QString& extension = QStringLiteral("png"));

/// A JPEG picture of these pixels.
QByteArray jpeg(int width, int height);
/// A PDF file of A4 pages.
QByteArray pdf(int pages);

} // namespace ArchiveSample
