#include "services/documents/StagedFile.h"

#include "core/SafeFile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

bool isTaken(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

// A name beside that nothing has yet, what an earlier crash left there included.
QString freePath(const QString& stem, const QString& suffix)
{
    QString path = stem + suffix;
    for (int i = 2; isTaken(path); ++i)
        path = stem + u'_' + QString::number(i) + suffix;
    return path;
}

// Unlike QFile::rename it replaces a file in one step, so that the path is never without one.
bool renameOver(const QString& from, const QString& to)
{
    std::error_code error;
    std::filesystem::rename(
        QFileInfo(from).filesystemFilePath(), QFileInfo(to).filesystemFilePath(), error);
    return !error;
}

QString asidePath(const QString& path)
{
    const QFileInfo info(path);
    const QString time = QDateTime::currentDateTime().toString(u"yyyyMMdd_HHmmss");
    return freePath(info.absolutePath() + u'/' + info.completeBaseName() + u"_旧_"_s + time,
        u'.' + info.suffix());
}

} // namespace

StagedFile::StagedFile(const QString& path)
    : m_path(path)
{
}

StagedFile::~StagedFile()
{
    takeBack();
}

bool StagedFile::putAside(const QString& path)
{
    const QString aside = asidePath(path);
    if (!renameOver(path, aside))
        return false;
    qWarning("A file that is not this document was put aside: %s", qUtf8Printable(aside));
    return true;
}

bool StagedFile::write(const QByteArray& bytes)
{
    const QString newPath = freePath(m_path, u".new"_s);
    if (!SafeFile::write(newPath, bytes))
        return false;
    m_newPath = newPath;
    return true;
}

bool StagedFile::putInPlace(Former former)
{
    if (m_newPath.isEmpty() || (isTaken(m_path) && !saveFormer(former)))
        return false;
    m_inPlace = renameOver(m_newPath, m_path);
    if (m_inPlace) {
        m_newPath.clear();
        SafeFile::makeNameDurable(m_path);
    }
    return m_inPlace;
}

bool StagedFile::saveFormer(Former former)
{
    if (QFileInfo(m_path).isDir())
        return false;
    m_former = former;
    // A copy in either case: moved away, the path would be without a file until the new one comes.
    // Under this name a crash before the commit shows that it belongs back.
    QFile file(m_path);
    const QString formerPath = freePath(m_path, u".old"_s);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError || !SafeFile::write(formerPath, bytes))
        return false;
    m_formerPath = formerPath;
    return true;
}

void StagedFile::keep()
{
    if (!m_formerPath.isEmpty() && m_former == Former::Replaced && !QFile::remove(m_formerPath))
        qWarning("Former file not removed: %s", qUtf8Printable(m_formerPath));
    if (!m_formerPath.isEmpty() && m_former == Former::PutAside) {
        const QString aside = asidePath(m_path);
        const bool renamed = renameOver(m_formerPath, aside);
        qWarning("A file that is not this document was put aside: %s",
            qUtf8Printable(renamed ? aside : m_formerPath));
    }
    m_formerPath.clear();
    m_inPlace = false;
}

void StagedFile::takeBack()
{
    if (!m_newPath.isEmpty() && !QFile::remove(m_newPath))
        qWarning("New file not removed: %s", qUtf8Printable(m_newPath));
    if (m_inPlace && !m_formerPath.isEmpty()) {
        if (!renameOver(m_formerPath, m_path))
            qCritical("Former file not put back: %s", qUtf8Printable(m_formerPath));
    } else if (!m_formerPath.isEmpty() && !QFile::remove(m_formerPath)) {
        qWarning("Copy of the former file not removed: %s", qUtf8Printable(m_formerPath));
    } else if (m_inPlace && !QFile::remove(m_path)) {
        qWarning("New file not removed: %s", qUtf8Printable(m_path));
    }
}
