#include "support/LogCapture.h"

#include "support/PrivateHome.h"

#include "LogEntries.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace support {

using tarqa::housekeeping::testkit::LogEntries;

namespace {

/// The log of this process: the only one in its private home. Empty if there is none yet.
std::string log_file()
{
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(PrivateHome::log_directory(), error)) {
        if (entry.path().extension() == ".log" && entry.is_regular_file()) {
            return entry.path().string();
        }
    }
    return {};
}

/// What captures have not dealt with.
LogEntries& unaccounted()
{
    static LogEntries s_entries(&log_file, true);
    return s_entries;
}

} // namespace

LogCapture::LogCapture()
{
    for (const std::string& line : unannounced_log_lines()) {
        ADD_FAILURE() << "unannounced entry in the error log: " << line;
    }
    m_p_entries = std::make_unique<LogEntries>(&log_file);
}

LogCapture::~LogCapture()
{
    for (const std::string& line : lines()) {
        ADD_FAILURE() << "unexpected entry in the error log: " << line;
    }
    unaccounted().restart();
}

std::string LogCapture::text() const
{
    return m_p_entries->text();
}

std::vector<std::string> LogCapture::lines() const
{
    return m_p_entries->lines();
}

bool LogCapture::take(const std::string& part)
{
    return m_p_entries->take(part);
}

bool LogCapture::took_assert(
    const std::string& expression, const std::string& function, const std::string& file, unsigned int line)
{
    return m_p_entries->take_assert(expression, function, file, line);
}

int LogCapture::count(const std::string& part) const
{
    return m_p_entries->count(part);
}

void LogCapture::take_all()
{
    m_p_entries->take_all();
}

std::vector<std::string> unannounced_log_lines()
{
    return unaccounted().next();
}

} // namespace support
