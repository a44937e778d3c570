#include "core/InstanceLock.h"

#include <QFileInfo>

InstanceLock::InstanceLock(const QString& path)
    : m_lock(path)
{
    // A month of work without a pause must not make the lock look abandoned.
    m_lock.setStaleLockTime(0);
}

InstanceLock::Outcome InstanceLock::acquire()
{
    if (m_lock.isLocked() || m_lock.tryLock(0))
        return Outcome::Acquired;
    // To QLockFile a folder in the file's place looks like a lock that is held.
    if (m_lock.error() != QLockFile::LockFailedError || QFileInfo(m_lock.fileName()).isDir())
        return Outcome::CannotCreate;
    // QLockFile trusts host name and process number in the file. Removing a stale file tests
    // the operating system's own lock first, which a living holder still has.
    const bool acquired = m_lock.removeStaleLockFile() && m_lock.tryLock(0);
    return acquired ? Outcome::Acquired : Outcome::HeldByOther;
}

void InstanceLock::release()
{
    m_lock.unlock();
}
