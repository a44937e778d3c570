#include "core/SafeFile.h"

#include <QSaveFile>

namespace SafeFile {

namespace {

bool writeAndCommit(QSaveFile& file, const QByteArray& bytes)
{
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return false;
    // Qt 6.4 commits an empty file on a full disk and calls it a success: the failed flush is
    // only visible in the error before the commit.
    if (!file.flush() || file.error() != QFileDevice::NoError) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace

bool write(const QString& path, const QByteArray& bytes, QString* error)
{
    QSaveFile file(path);
    if (writeAndCommit(file, bytes))
        return true;
    if (error)
        *error = file.errorString();
    return false;
}

} // namespace SafeFile
