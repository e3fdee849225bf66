#include "RawLog.h"

#include "support/PrivateHome.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string next_file()
{
    static std::atomic<int> s_count{0};
    const std::string directory = support::PrivateHome::log_directory();
    std::filesystem::create_directories(directory);
    return directory + "/raw_" + std::to_string(++s_count) + ".log";
}

} // namespace

RawLog::RawLog()
    : m_file(next_file())
    , m_user(geteuid())
{ }

void RawLog::append(const std::string& text) const
{
    write_and_close(open(m_file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600), text);
}

void RawLog::append_to_own(const std::string& text) const
{
    const int descriptor = open(
        m_file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600);
    struct statx status;
    if (statx(descriptor, "", AT_EMPTY_PATH, STATX_TYPE | STATX_UID | STATX_NLINK | STATX_SIZE, &status) != 0
        || !S_ISREG(status.stx_mode) || status.stx_uid != m_user || status.stx_nlink > 1) {
        fail();
    }
    write_and_close(descriptor, text);
}

void RawLog::write_and_close(int descriptor, const std::string& text) const
{
    if (descriptor < 0 || write(descriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        fail();
    }
    close(descriptor);
}

void RawLog::fail() const
{
    std::perror(m_file.c_str());
    std::abort();
}
