#include "QtLockedFile.h"

#include "OwnFile_unix.h"

namespace tarqa::housekeeping {

namespace {

/// Applies a lock of the open file description, which unlike a process's lock is not lost when the process
/// closes another descriptor of the file. @return true on success
bool apply_lock(int descriptor, short type, bool block)
{
    struct flock request = {};
    request.l_type = type;
    request.l_whence = SEEK_SET; // the whole file
    int result;
    do {
        result = fcntl(descriptor, block ? F_OFD_SETLKW : F_OFD_SETLK, &request);
    } while (result == -1 && errno == EINTR);
    return result == 0;
}

} // namespace

bool QtLockedFile::open(OpenMode mode)
{
    if (isOpen()) {
        return false;
    }
    const QString name = fileName();
    // A name in a directory that everybody may write to.
    const int access = mode & WriteOnly ? O_RDWR : O_RDONLY;
    const int descriptor = open_own_file(QFile::encodeName(name).constData(), access | O_CREAT);
    if (descriptor == -1) {
        setErrorString(qt_error_string(errno));
        return false;
    }
    if (!QFile::open(descriptor, mode, AutoCloseHandle)) {
        ::close(descriptor);
        return false;
    }
    m_opened_name = name;
    return true;
}

/// A lock of the other kind is exchanged.
bool QtLockedFile::take(LockMode mode, bool block)
{
    return apply_lock(handle(), mode == ReadLock ? F_RDLCK : F_WRLCK, block);
}

bool QtLockedFile::release()
{
    return apply_lock(handle(), F_UNLCK, false);
}

} // namespace tarqa::housekeeping
