#pragma once

#include <QtCore/QFile>
#include <QtCore/QVector>

namespace tarqa::housekeeping {

/**
 * A file with an advisory lock that belongs to this object: two of them on one file exclude each other, in
 * one process as between processes, and the end of the process releases the lock. The file is never deleted:
 * another process may be about to lock it.
 *
 * Not for sharing between threads.
 */
class QtLockedFile : public QFile
{
    Q_OBJECT

public:
    enum LockMode
    {
        NoLock,
        ReadLock, ///< shared with other read locks
        WriteLock ///< exclusive
    };

    QtLockedFile();
    explicit QtLockedFile(const QString& name);
    /// Releases the lock and closes the file.
    ~QtLockedFile() override;

    /// Opens the file, which is made if it does not exist, for its owner only. Refuses symbolic links,
    /// whatever is no regular file, and files of other users.
    /// @param mode ReadOnly or ReadWrite
    bool open(OpenMode mode) override;
    void close() override;
    QString fileName() const override;

    /// @param block whether to wait until the lock is free @return false if it is not to be had, or the file
    /// is not open, or is not open for writing and a write lock is asked for
    bool lock(LockMode mode, bool block = true);
    bool unlock();
    bool isLocked() const { return m_lock_mode != NoLock; }
    LockMode lockMode() const { return m_lock_mode; }

private:
    // The platform's part, for an open file.
    bool take(LockMode mode, bool block);
    bool release();

    LockMode m_lock_mode = NoLock;
    QString m_opened_name; // which Qt forgets when a file is opened by its descriptor
    QVector<void*> m_mutexes; // Windows: the named mutexes that are held
};

} // namespace tarqa::housekeeping
