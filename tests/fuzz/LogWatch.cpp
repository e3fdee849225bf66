#include "LogWatch.h"

#include "Check.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace fuzz {

namespace {

const std::string s_failed = " ASSERT FAILED in ";

const std::string& log_file()
{
    return tarqa::housekeeping::ErrorProtocol::instance().log_filename();
}

bool ends_with(const std::string& line, const std::string& end)
{
    return line.size() >= end.size() && line.compare(line.size() - end.size(), end.size(), end) == 0;
}

} // namespace

LogWatch::LogWatch()
    : m_begin(std::filesystem::file_size(log_file()))
{ }

void LogWatch::check_assertions(const std::vector<std::string>& expected) const
{
    std::ifstream stream(log_file(), std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(m_begin));
    for (std::string line; std::getline(stream, line);) {
        const bool is_expected = std::any_of(expected.begin(), expected.end(),
            [&line](const std::string& text) { return ends_with(line, ": " + text); });
        check(line.find(s_failed) == std::string::npos || is_expected, line);
    }
}

} // namespace fuzz
