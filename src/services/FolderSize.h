#pragma once

#include <QStringList>

#include <memory>

class QDirIterator;

/// Adds up the files at some paths and below them, a little at a time, so that the window stays
/// alive whatever lies there. Links below them are not followed and not counted.
class FolderSize final {
public:
    /// Paths of folders or of files; missing ones count as nothing.
    explicit FolderSize(const QStringList& paths);
    ~FolderSize();
    FolderSize(FolderSize&& other) noexcept;
    FolderSize& operator=(FolderSize&& other) noexcept;

    /// Goes on for about so many milliseconds; true once everything has been counted.
    [[nodiscard]] bool advance(int milliseconds);

    qint64 bytes() const { return m_bytes; }
    qint64 files() const { return m_files; }

private:
    void beginNextPath();

    QStringList m_pending;
    std::unique_ptr<QDirIterator> m_items;
    qint64 m_bytes = 0;
    qint64 m_files = 0;
};
