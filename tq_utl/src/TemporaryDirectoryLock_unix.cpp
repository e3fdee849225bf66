#include "TemporaryDirectoryLock.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarqa::utilities {

namespace {

const int s_open_flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
const int s_attempts = 100;

int descriptor(std::intptr_t handle)
{
    return static_cast<int>(handle);
}

[[noreturn]] void fail(int reason)
{
    throw std::system_error(reason, std::generic_category());
}

/// Renames the directory unless something is called @p to already (a plain rename would replace an empty
/// directory); gives 0 or the reason.
int rename_to_free_name(const std::string& from, const std::string& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    struct stat there; // a file system that cannot do both in one step
    if (lstat(to.c_str(), &there) == 0) {
        return EEXIST;
    }
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

/// True if @p path is still the open directory, and not something that was put in its place.
bool is_open_directory(const std::string& path, int directory)
{
    struct stat opened;
    struct stat named;
    return fstat(directory, &opened) == 0 && lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev
        && opened.st_ino == named.st_ino;
}

/// Gives the owner all rights in the directories of a tree, or the contents of a write-protected one could
/// not be deleted.
void open_up(const std::filesystem::path& top)
{
    namespace fs = std::filesystem;
    const auto options = fs::perm_options::add | fs::perm_options::nofollow;
    std::error_code error;
    fs::permissions(top, fs::perms::owner_all, options, error);
    fs::recursive_directory_iterator entry(top, fs::directory_options::skip_permission_denied, error);
    while (!error && entry != fs::recursive_directory_iterator()) {
        std::error_code ignored;
        if (entry->symlink_status(ignored).type() == fs::file_type::directory) {
            fs::permissions(entry->path(), fs::perms::owner_all, options, ignored);
        }
        entry.increment(error);
    }
}

} // namespace

TemporaryDirectoryLock::TemporaryDirectoryLock(const std::string& path, std::intptr_t handle)
    : m_path(path)
    , m_handle(handle)
    , m_process(getpid())
{ }

TemporaryDirectoryLock::~TemporaryDirectoryLock()
{
    // Closing is all: an explicit unlock in a forked child would take the lock from its parent.
    ::close(descriptor(m_handle));
}

std::unique_ptr<TemporaryDirectoryLock> TemporaryDirectoryLock::create(
    const std::string& parent, const std::string& kind)
{
    const std::string pattern = kind + '-' + std::to_string(getpid()) + "-XXXXXX";
    // Made under a name that no clean-up looks at, because it cannot be made and locked in one step.
    const std::string hidden_pattern = parent + half_made + pattern;
    for (int attempt = 0; attempt < s_attempts; ++attempt) {
        std::string hidden = hidden_pattern;
        if (!mkdtemp(hidden.data())) {
            fail(errno);
        }
        const int directory = ::open(hidden.c_str(), s_open_flags);
        if (directory < 0) {
            const int reason = errno;
            ::rmdir(hidden.c_str());
            fail(reason);
        }
        std::unique_ptr<TemporaryDirectoryLock> lock(new TemporaryDirectoryLock(hidden, directory));
        // Where the file system has no locks, no clean-up gets one either, and the directory is safe from it.
        ::flock(directory, LOCK_EX | LOCK_NB);
        const std::string path = parent + hidden.substr(hidden.size() - pattern.size());
        const int reason = rename_to_free_name(hidden, path);
        if (reason == 0) {
            lock->m_path = path;
            return lock;
        }
        ::rmdir(hidden.c_str());
        if (reason != EEXIST) {
            fail(reason);
        }
    }
    fail(EEXIST);
}

std::unique_ptr<TemporaryDirectoryLock> TemporaryDirectoryLock::take(const std::string& path)
{
    const int directory = ::open(path.c_str(), s_open_flags);
    if (directory < 0) {
        return nullptr;
    }
    std::unique_ptr<TemporaryDirectoryLock> lock(new TemporaryDirectoryLock(path, directory));
    struct stat facts;
    const bool own = fstat(directory, &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == geteuid();
    if (!own || ::flock(directory, LOCK_EX | LOCK_NB) != 0) {
        return nullptr;
    }
    return lock;
}

void TemporaryDirectoryLock::remove()
{
    if (m_process != getpid() || !is_open_directory(m_path, descriptor(m_handle))) {
        return;
    }
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
    if (error) {
        open_up(m_path);
        std::filesystem::remove_all(m_path, error);
    }
}

} // namespace tarqa::utilities
