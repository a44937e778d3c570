#include "services/FolderSize.h"

#include <QDeadlineTimer>
#include <QDirIterator>
#include <QFileInfo>

FolderSize::FolderSize(const QStringList& paths)
    : m_pending(paths)
{
}

FolderSize::~FolderSize() = default;
FolderSize::FolderSize(FolderSize&& other) noexcept = default;
FolderSize& FolderSize::operator=(FolderSize&& other) noexcept = default;

bool FolderSize::advance(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!deadline.hasExpired()) {
        if (m_items && m_items->hasNext()) {
            m_items->next();
            m_bytes += m_items->fileInfo().size();
            ++m_files;
        } else if (!m_pending.isEmpty()) {
            beginNextPath();
        } else {
            m_items.reset();
            return true;
        }
    }
    return false;
}

void FolderSize::beginNextPath()
{
    const QString path = m_pending.takeFirst();
    const QFileInfo info(path);
    m_items.reset();
    if (info.isDir()) {
        m_items = std::make_unique<QDirIterator>(path,
            QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks,
            QDirIterator::Subdirectories);
    } else if (info.isFile()) {
        m_bytes += info.size();
        ++m_files;
    }
}
