#include "core/InstanceLock.h"

InstanceLock::InstanceLock(const QString& path)
    : m_lock(path)
{
    // A month of work without a pause must not make the lock look abandoned.
    m_lock.setStaleLockTime(0);
}

bool InstanceLock::acquire()
{
    if (m_lock.isLocked() || m_lock.tryLock(0))
        return true;
    // QLockFile trusts host name and process number in the file. Removing a stale file tests
    // the operating system's own lock first, which a living holder still has.
    return m_lock.removeStaleLockFile() && m_lock.tryLock(0);
}

void InstanceLock::release()
{
    m_lock.unlock();
}
