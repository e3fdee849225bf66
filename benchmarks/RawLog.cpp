#include "RawLog.h"

#include "support/PrivateHome.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
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
{ }

void RawLog::append(const std::string& text) const
{
    const int descriptor = open(m_file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0 || write(descriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        std::perror(m_file.c_str());
        std::abort();
    }
    close(descriptor);
}
