#pragma once

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarqa::housekeeping {

// Files that are written without the user having named them. Somebody else may have put something under
// their names. What is here may be called in signal handlers.

/// Whether this is a regular file of this user's that has no second name, under which it might be anything.
inline bool is_own_file(const struct stat& status)
{
    return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_nlink <= 1;
}

/**
 * Opens such a file. It follows no link, waits for nobody at a pipe's other end, and does not truncate.
 * @param flags of open(); a file that is made gets the rights 0600, less the process's mask
 * @param status becomes the file's
 * @return the descriptor; -1, with the reason in errno, if there is something else
 */
inline int open_own_file(const char* name, int flags, struct stat& status)
{
    const int descriptor = ::open(name, flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600);
    if (descriptor < 0 || (::fstat(descriptor, &status) == 0 && is_own_file(status))) {
        return descriptor;
    }
    ::close(descriptor);
    errno = EPERM;
    return -1;
}

} // namespace tarqa::housekeeping
