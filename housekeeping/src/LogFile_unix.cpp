#include "LogFile.h"

#include "OwnFile_unix.h"

#include <ctime>

#include <sys/file.h>

namespace tarqa::housekeeping::log_file {

namespace {

constexpr mode_t s_file_mode = 0600;
constexpr mode_t s_directory_mode = 0700;
constexpr mode_t s_owner = 0700;
constexpr uid_t s_superuser = 0;
constexpr mode_t s_writable_for_others = 0022;
constexpr long long s_nanoseconds = 1000000000LL;
constexpr long long s_moment = 10000000; // nanoseconds

/// Writes all of @p text and closes @p descriptor. Short writes go on; a signal does not count as an error.
bool write_and_close(int descriptor, std::string_view text)
{
    const char* p_rest = text.data();
    std::size_t left = text.size();
    bool written = true;
    while (left > 0) {
        const ssize_t count = ::write(descriptor, p_rest, left);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            written = false;
            break;
        }
        p_rest += count;
        left -= static_cast<std::size_t>(count);
    }
    return (::close(descriptor) == 0 || errno == EINTR) && written;
}

/// Gives a directory rights, but never what a link with its name leads to.
void set_rights(const std::string& directory, mode_t rights)
{
    ::fchmodat(AT_FDCWD, directory.c_str(), rights, AT_SYMLINK_NOFOLLOW);
}

/// The user whose log it is: the one whom the process works for when it chooses one.
uid_t owner()
{
    static const uid_t s_user = ::geteuid(); // a call of the system's otherwise, at each entry
    return s_user;
}

/// 0 if there is no such clock.
long long nanoseconds_of(clockid_t clock)
{
    struct timespec time;
    return ::clock_gettime(clock, &time) == 0 ? time.tv_sec * s_nanoseconds + time.tv_nsec : 0;
}

/// What was found out about the log a moment ago, for entries that follow each other closely. Only its user
/// can put anything into a directory that nobody else may write to, so that its log need not be looked at
/// again so soon, and is found in the directory without the way there. Under the log's mutex.
class Burst
{
public:
    /// Opens @p file if it was looked at a moment ago, and is in such a directory. It is not made.
    /// @return the descriptor, or -1: the file has to be looked at
    int open(const std::string& file)
    {
        const long long moment = nanoseconds_of(CLOCK_MONOTONIC_COARSE) - m_looked;
        if (moment > s_moment || file != m_file || !open_directory()) {
            end();
            return -1;
        }
        if (m_directory == s_shared) {
            return -1;
        }
        const int descriptor = ::openat(m_directory, m_file.c_str() + m_name,
            O_WRONLY | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (descriptor < 0) {
            end();
        }
        return descriptor;
    }

    /// Remembers that @p file was looked at, and is the user's own.
    void looked_at(const std::string& file)
    {
        m_looked = nanoseconds_of(CLOCK_MONOTONIC_COARSE);
        if (file != m_file) {
            m_file = file;
            m_name = file.rfind('/') + 1;
        }
    }

private:
    static constexpr int s_none = -1;
    static constexpr int s_shared = -2;

    /// Only the second entry does: most have no neighbours.
    bool open_directory()
    {
        if (m_directory != s_none) {
            return true;
        }
        m_directory = ::open(m_file.substr(0, m_name).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        struct stat status;
        if (m_directory == s_none || ::fstat(m_directory, &status) != 0) {
            return false;
        }
        if (status.st_uid != owner() || (status.st_mode & s_writable_for_others) != 0) {
            ::close(m_directory);
            m_directory = s_shared;
        }
        return true;
    }

    void end()
    {
        if (m_directory >= 0) {
            ::close(m_directory);
        }
        m_directory = s_none;
    }

    std::string m_file;
    std::size_t m_name = 0; // where it begins in the path
    long long m_looked = 0;
    int m_directory = s_none;
};

/// Opens the log, whose directory may have been deleted, or could not be made when the program began.
int open_log(const std::string& file, struct statx& status)
{
    const int flags = O_WRONLY | O_CREAT | O_APPEND;
    const int descriptor = open_own_file(file.c_str(), flags, owner(), status);
    if (descriptor >= 0 || errno != ENOENT) {
        return descriptor;
    }
    const std::string directory = file.substr(0, file.rfind('/') + 1);
    return make_directory(directory) && claim_directory(directory)
        ? open_own_file(file.c_str(), flags, owner(), status)
        : -1;
}

} // namespace

bool write(const std::string& file, std::string_view text, bool empty_first)
{
    static Burst& s_burst = *new Burst; // leaked: for everybody's last words
    const int known = empty_first ? -1 : s_burst.open(file);
    if (known >= 0) {
        return write_and_close(known, text);
    }
    struct statx status;
    const int descriptor = open_log(file, status);
    if (descriptor < 0) {
        return false;
    }
    const bool may_write = !empty_first || ::ftruncate(descriptor, 0) == 0;
    if (empty_first || status.stx_size == 0) {
        ::fchmod(descriptor, s_file_mode); // not at each entry: the user may open a log to others
    }
    s_burst.looked_at(file);
    return write_and_close(descriptor, may_write ? text : std::string_view()) && may_write;
}

bool make_directory(const std::string& directory)
{
    for (std::size_t end = directory.find('/', 1); end != std::string::npos;
         end = directory.find('/', end + 1)) {
        const std::string path = directory.substr(0, end);
        if (::mkdir(path.c_str(), s_directory_mode) == 0) {
            set_rights(path, s_directory_mode); // whatever the process's mask
        }
    }
    struct stat status;
    return ::stat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool claim_directory(const std::string& directory)
{
    const std::string path = directory.substr(0, directory.find_last_not_of('/') + 1);
    struct stat named;
    struct stat status;
    if (::lstat(path.c_str(), &named) != 0 || ::stat(path.c_str(), &status) != 0
        || status.st_uid != ::geteuid()) {
        return false;
    }
    if (S_ISLNK(named.st_mode)) {
        return named.st_uid == ::geteuid() || named.st_uid == s_superuser;
    }
    if ((status.st_mode & ~S_IFMT & ~s_owner) != 0) {
        set_rights(path, status.st_mode & s_owner);
    }
    return true;
}

bool is_own(const std::string& file)
{
    struct statx status;
    return ask_for_file(AT_FDCWD, file.c_str(), AT_SYMLINK_NOFOLLOW, status) && is_own_file(status, owner());
}

bool create_new(const std::string& file, std::string_view text)
{
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, s_file_mode);
    if (descriptor < 0) {
        return false;
    }
    ::fchmod(descriptor, s_file_mode); // whatever the process's mask
    write_and_close(descriptor, text); // the name is ours, even on a full disk
    return true;
}

bool last_modified(const std::string& file, long long& nanoseconds)
{
    struct stat status;
    if (::lstat(file.c_str(), &status) != 0) {
        return false;
    }
    nanoseconds = status.st_mtim.tv_sec * s_nanoseconds + status.st_mtim.tv_nsec;
    return true;
}

long long now()
{
    return nanoseconds_of(CLOCK_REALTIME);
}

DirectoryLock::DirectoryLock(const std::string& directory)
{
    const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    m_handle = descriptor;
    while (::flock(descriptor, LOCK_EX) != 0 && errno == EINTR) { }
}

DirectoryLock::~DirectoryLock()
{
    if (m_handle >= 0) {
        ::close(static_cast<int>(m_handle)); // which also unlocks
    }
}

} // namespace tarqa::housekeeping::log_file
