#pragma once

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarqa::housekeeping {

// Files that are written without the user having named them. Somebody else may have put something under
// their names. What is here may be called in signal handlers.

/**
 * Asks for what tells an own file, and for its size, of @p name as openat() takes it.
 * @param flags of statx()
 * @return false, with the reason in errno, if there is nothing to be had
 */
inline bool ask_for_file(int directory, const char* name, int flags, struct statx& status)
{
    // Not for its times. Once somebody has seen these, the next write has to enter them anew, in the file
    // system's journal as well, which costs as much as the write itself.
    return ::statx(directory, name, flags, STATX_TYPE | STATX_UID | STATX_NLINK | STATX_SIZE, &status) == 0;
}

/// Whether this is a regular file of @p user's that has no second name, under which it might be anything.
inline bool is_own_file(const struct statx& status, uid_t user)
{
    return S_ISREG(status.stx_mode) && status.stx_uid == user && status.stx_nlink <= 1;
}

/**
 * Opens such a file. It follows no link, waits for nobody at a pipe's other end, and does not truncate.
 * @param flags of open(); a file that is made gets the rights 0600, less the process's mask
 * @param status becomes the file's
 * @return the descriptor; -1, with the reason in errno, if there is something else
 */
inline int open_own_file(const char* name, int flags, uid_t user, struct statx& status)
{
    const int descriptor = ::open(name, flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600);
    if (descriptor < 0
        || (ask_for_file(descriptor, "", AT_EMPTY_PATH, status) && is_own_file(status, user))) {
        return descriptor;
    }
    ::close(descriptor);
    errno = EPERM;
    return -1;
}

/// The same, of the user that the process works for.
inline int open_own_file(const char* name, int flags)
{
    struct statx status;
    return open_own_file(name, flags, ::geteuid(), status);
}

} // namespace tarqa::housekeeping
