#include "LogFile.h"

#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarqa::housekeeping::log_file {

namespace {

constexpr mode_t s_file_mode = 0644;
constexpr mode_t s_directory_mode = 0700;
constexpr long long s_nanoseconds = 1000000000LL;

/// Writes all of @p text and closes @p descriptor. Short writes go on; a signal does not count as an error.
bool write_and_close(int descriptor, const std::string& text)
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
    return ::close(descriptor) == 0 && written;
}

} // namespace

bool write(const std::string& file, const std::string& text, bool empty_first)
{
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (empty_first ? O_TRUNC : O_APPEND);
    const int descriptor = ::open(file.c_str(), flags, s_file_mode);
    return descriptor >= 0 && write_and_close(descriptor, text);
}

bool make_directory(const std::string& directory)
{
    for (std::size_t end = directory.find('/', 1); end != std::string::npos;
         end = directory.find('/', end + 1)) {
        ::mkdir(directory.substr(0, end).c_str(), s_directory_mode);
    }
    struct stat status;
    return ::stat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool create_new(const std::string& file, const std::string& text)
{
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, s_file_mode);
    if (descriptor < 0) {
        return false;
    }
    write_and_close(descriptor, text); // the name is ours, even on a full disk
    return true;
}

bool last_modified(const std::string& file, long long& nanoseconds)
{
    struct stat status;
    // A link that leads nowhere has the time of the link itself.
    if (::stat(file.c_str(), &status) != 0 && ::lstat(file.c_str(), &status) != 0) {
        return false;
    }
    nanoseconds = status.st_mtim.tv_sec * s_nanoseconds + status.st_mtim.tv_nsec;
    return true;
}

long long now()
{
    struct timespec time;
    return ::clock_gettime(CLOCK_REALTIME, &time) == 0 ? time.tv_sec * s_nanoseconds + time.tv_nsec : 0;
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
