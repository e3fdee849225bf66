#include <tarqa/testkit/LogCapture.h>

#include "LogEntries.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <algorithm>
#include <utility>

namespace tarqa::housekeeping::testkit {

namespace {

std::string log_file()
{
    return ErrorProtocol::const_instance().log_filename();
}

/// What no capture has seen, and the lines that were found when one began.
struct Account
{
    LogEntries since{&log_file, true};
    std::vector<std::string> unannounced;
    int captures = 0;
};

Account& account()
{
    static Account* const s_p_account = new Account; // leaked: captures may live as long as the program
    return *s_p_account;
}

void keep_what_nobody_saw()
{
    Account& kept = account();
    const std::vector<std::string> lines = kept.since.next();
    if (kept.captures == 0) {
        kept.unannounced.insert(kept.unannounced.end(), lines.begin(), lines.end());
    }
}

} // namespace

LogCapture::LogCapture()
{
    keep_what_nobody_saw();
    ++account().captures;
    m_p_entries = std::make_unique<LogEntries>(&log_file);
}

LogCapture::~LogCapture()
{
    keep_what_nobody_saw();
    --account().captures;
}

void LogCapture::announce(const std::string& part)
{
    m_announced.push_back(part);
}

/// The lines that nothing announced. @param missing what announced nothing
std::vector<std::string> LogCapture::compare(std::vector<std::string>& missing) const
{
    std::vector<std::string> left = lines();
    for (const std::string& part : m_announced) {
        const auto found = std::find_if(left.begin(), left.end(),
            [&part](const std::string& line) { return line.find(part) != std::string::npos; });
        if (found == left.end()) {
            missing.push_back(part);
        } else {
            left.erase(found);
        }
    }
    return left;
}

std::vector<std::string> LogCapture::unannounced() const
{
    std::vector<std::string> missing;
    return compare(missing);
}

std::vector<std::string> LogCapture::missing() const
{
    std::vector<std::string> missing;
    compare(missing);
    return missing;
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
    keep_what_nobody_saw();
    return std::exchange(account().unannounced, {});
}

} // namespace tarqa::housekeeping::testkit
