#include "services/documents/DocumentFiles.h"

#include "core/AppPaths.h"
#include "db/DocumentDao.h"
#include "services/documents/DocumentPdf.h"
#include "services/documents/DocumentTexts.h"
#include "services/documents/StagedFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <optional>

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

// Where letter case matters, taking two files for one only spares a file.
QString comparable(const QString& path)
{
    return QDir::cleanPath(path).toCaseFolded();
}

bool names(const DocumentRecord& record, const QString& wanted)
{
    return comparable(ownFile(record)) == wanted || comparable(record.filePath) == wanted;
}

std::optional<QList<DocumentRecord>> allRows()
{
    DocumentDao documents;
    const QList<DocumentRecord> rows = documents.listWithoutContent();
    if (!documents.lastError().isEmpty())
        return {};
    return rows;
}

// What interrupted regenerations left of this file, the latest first.
QStringList formersOf(const QString& path)
{
    const QFileInfo info(path);
    QStringList formers;
    const QDir folder(info.absolutePath());
    for (const QString& name : folder.entryList({ u"*.old"_s }, QDir::Files, QDir::Time)) {
        if (name.startsWith(info.fileName()))
            formers += folder.filePath(name);
    }
    return formers;
}

// Which of them belongs back: the PDF of the stored text, or else, from under another PDF, what the
// program never made.
QString formerOf(const DocumentRecord& record, const QString& path)
{
    const QStringList formers = formersOf(path);
    const auto find = [&](const auto& isWanted) {
        const auto found = std::find_if(formers.begin(), formers.end(), isWanted);
        return found == formers.end() ? QString() : *found;
    };
    const QString stored = find(
        [&](const QString& former) { return DocumentPdf::isOf(former, record.contentHtml); });
    return stored.isEmpty() && QFileInfo::exists(path)
        ? find([](const QString& former) { return !DocumentPdf::isUntouched(former); })
        : stored;
}

bool putBack(const QString& former, const QString& path)
{
    QFile file(former);
    StagedFile staged(path);
    if (!file.open(QIODevice::ReadOnly) || !staged.write(file.readAll())
        || !staged.putInPlace(StagedFile::Former::PutAside))
        return false;
    staged.keep();
    return file.remove();
}

void repairFileOf(const DocumentRecord& record)
{
    const QString path = ownFile(record);
    // A signed copy that was scanned over the PDF is worth more than what the program made.
    const bool isOurs = !QFileInfo::exists(path) || DocumentPdf::isUntouched(path);
    if (!isOurs || DocumentPdf::isOf(path, record.contentHtml) || isNamedByOther(path, record.id))
        return;
    const QString former = formerOf(record, path);
    if (former.isEmpty())
        return;
    if (putBack(former, path))
        qInfo("Interrupted regeneration undone: %s", qUtf8Printable(path));
    else
        qWarning("Former PDF not put back: %s", qUtf8Printable(former));
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
    // A row from elsewhere may name anything, a program too.
    const bool elsewhere = record.filePath.endsWith(u".pdf"_s, Qt::CaseInsensitive)
        && !QFileInfo(own).isFile() && QFileInfo(record.filePath).isFile();
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
    const QString wanted = comparable(path);
    return std::any_of(rows->begin(), rows->end(),
        [&](const DocumentRecord& record) { return record.id != id && names(record, wanted); });
}

QStringList filesWithoutRow()
{
    QStringList free;
    const auto rows = allRows();
    if (!rows)
        return free;
    QSet<QString> named;
    for (const DocumentRecord& record : *rows)
        named << comparable(ownFile(record)) << comparable(record.filePath);
    const QDir folder(AppPaths::exportsDir());
    const QStringList patterns { u"*.pdf"_s, u"*.pdf*.new"_s, u"*.pdf*.old"_s };
    for (const QString& name : folder.entryList(patterns, QDir::Files, QDir::Name)) {
        if (!named.contains(comparable(folder.filePath(name))))
            free += folder.filePath(name);
    }
    return free;
}

void repair()
{
    // Without such a file, which is the rule, no document has to be read.
    if (QDir(AppPaths::exportsDir()).entryList({ u"*.old"_s }, QDir::Files).isEmpty())
        return;
    for (const DocumentRecord& record : DocumentDao().list())
        repairFileOf(record);
}

} // namespace DocumentFiles
