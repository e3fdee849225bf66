#include "QtLockedFile.h"

namespace tarqa::housekeeping {

QtLockedFile::QtLockedFile() = default;

QtLockedFile::QtLockedFile(const QString& name)
    : QFile(name)
{ }

QtLockedFile::~QtLockedFile()
{
    QtLockedFile::close();
}

void QtLockedFile::close()
{
    unlock();
    QFile::close();
    if (!m_opened_name.isEmpty()) {
        setFileName(m_opened_name);
        m_opened_name.clear();
    }
}

QString QtLockedFile::fileName() const
{
    return m_opened_name.isEmpty() ? QFile::fileName() : m_opened_name;
}

bool QtLockedFile::lock(LockMode mode, bool block)
{
    if (!isOpen() || (mode == WriteLock && !isWritable())) {
        return false;
    }
    if (mode == NoLock) {
        return unlock();
    }
    if (mode == m_lock_mode) {
        return true;
    }
    if (!take(mode, block)) {
        return false;
    }
    m_lock_mode = mode;
    return true;
}

bool QtLockedFile::unlock()
{
    if (!isOpen() || !isLocked()) {
        return true;
    }
    m_lock_mode = NoLock;
    return release();
}

} // namespace tarqa::housekeeping
