#include "core/SafeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

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

void makeNameDurable(const QString& path)
{
#ifdef Q_OS_UNIX
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
#else
    Q_UNUSED(path)
#endif
}

} // namespace SafeFile
