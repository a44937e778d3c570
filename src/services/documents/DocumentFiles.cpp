#include "services/documents/DocumentFiles.h"

#include "core/AppPaths.h"
#include "db/DocumentDao.h"
#include "services/documents/DocumentTexts.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace DocumentFiles {

namespace {

// The stored path may come from another system, with its separators.
QString storedName(const DocumentRecord& record)
{
    const qsizetype separator
        = qMax(record.filePath.lastIndexOf(u'/'), record.filePath.lastIndexOf(u'\\'));
    const QString name = record.filePath.sliced(separator + 1);
    const bool usable = !name.isEmpty() && name != u"."_s && name != u".."_s;
    return usable ? name : fileName(record);
}

bool isSamePath(const QString& a, const QString& b)
{
    // Where letter case matters, taking two files for one only spares a file.
    return QDir::cleanPath(a).compare(QDir::cleanPath(b), Qt::CaseInsensitive) == 0;
}

bool names(const DocumentRecord& record, const QString& path)
{
    return isSamePath(ownFile(record), path) || isSamePath(record.filePath, path);
}

std::optional<QList<DocumentRecord>> allRows()
{
    DocumentDao documents;
    const QList<DocumentRecord> rows = documents.list();
    if (!documents.lastError().isEmpty())
        return {};
    return rows;
}

} // namespace

QString fileName(const DocumentRecord& record)
{
    return record.docNo + u'_' + DocumentTexts::kindName(record.docType) + u".pdf"_s;
}

QString ownFile(const DocumentRecord& record)
{
    return AppPaths::exportsDir() + u'/' + storedName(record);
}

QString documentFile(const DocumentRecord& record)
{
    const QString own = ownFile(record);
    const bool elsewhere = !QFileInfo(own).isFile() && QFileInfo(record.filePath).isFile();
    return elsewhere ? record.filePath : own;
}

bool isThere(const DocumentRecord& record)
{
    return QFileInfo(documentFile(record)).isFile();
}

bool isNamedByOther(const QString& path, qint64 id)
{
    const auto rows = allRows();
    if (!rows)
        return true;
    return std::any_of(rows->begin(), rows->end(),
        [&](const DocumentRecord& record) { return record.id != id && names(record, path); });
}

QStringList filesWithoutRow()
{
    QStringList free;
    const auto rows = allRows();
    if (!rows)
        return free;
    const QDir folder(AppPaths::exportsDir());
    for (const QString& name : folder.entryList({ u"*.pdf"_s }, QDir::Files, QDir::Name)) {
        const QString path = folder.filePath(name);
        const auto isNamed = [&](const DocumentRecord& record) { return names(record, path); };
        if (std::none_of(rows->begin(), rows->end(), isNamed))
            free += path;
    }
    return free;
}

} // namespace DocumentFiles
