#include "QtLockedFile.h"

#include <QtCore/QFileInfo>

#include <windows.h>

namespace tarqa::housekeeping {

namespace {

const int s_most_readers = 32;
const int s_longest_path = 200; // of the characters in a mutex's name; the last ones tell files apart

/// A name of its own for every file: no backslashes, no difference of case.
QString mutex_name(const QString& file)
{
    QString path = QFileInfo(file).absoluteFilePath().toLower();
    return "QtLockedFile mutex " + path.replace('/', '_').replace('\\', '_').right(s_longest_path) + ' ';
}

void let_go(void* mutex)
{
    ReleaseMutex(mutex);
    CloseHandle(mutex);
}

/// @return the mutex, held; null if it is not to be had
void* take_mutex(const QString& name, bool block)
{
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, reinterpret_cast<const wchar_t*>(name.utf16()));
    if (!mutex) {
        return nullptr;
    }
    const DWORD result = WaitForSingleObject(mutex, block ? INFINITE : 0);
    if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) {
        return mutex;
    }
    CloseHandle(mutex);
    return nullptr;
}

} // namespace

bool QtLockedFile::open(OpenMode mode)
{
    const QFileInfo info(fileName());
    return !info.isSymLink() && !info.isDir() && QFile::open(mode);
}

/// A writer holds the mutexes of all readers, a reader any one of them. The mutex of the entrance keeps two
/// writers from waiting for each other. A thread may take a mutex twice, so two objects exclude each other in
/// different threads and processes only.
bool QtLockedFile::take(LockMode mode, bool block)
{
    release();
    const QString name = mutex_name(fileName());
    void* const entrance = take_mutex(name + "entrance", block);
    if (!entrance) {
        return false;
    }
    const bool wait = block && mode == WriteLock;
    for (int i = 0; i < s_most_readers; ++i) {
        if (void* const mutex = take_mutex(name + QString::number(i), wait)) {
            m_mutexes.append(mutex);
        }
        if (mode == ReadLock && !m_mutexes.isEmpty()) {
            break;
        }
    }
    let_go(entrance);
    if (m_mutexes.size() < (mode == WriteLock ? s_most_readers : 1)) {
        release();
        return false;
    }
    return true;
}

bool QtLockedFile::release()
{
    for (void* const mutex : qAsConst(m_mutexes)) {
        let_go(mutex);
    }
    m_mutexes.clear();
    return true;
}

} // namespace tarqa::housekeeping
