#include "support/LogCapture.h"

#include "support/PrivateHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace support {

namespace {

const char* const s_head_end = "************ ERROR LOG BEGIN  ************ \n";
const char* const s_banner = "************** END OF ERROR LOG ***************";

std::size_t s_accounted = 0; // bytes of the log that captures have dealt with

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

std::string read(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

/// The part of the log's text after @p begin, without the head of the file.
std::string entries_since(const std::string& log, std::size_t begin)
{
    if (begin > log.size()) { // the log was emptied in between
        begin = 0;
    }
    const std::size_t head = log.find(s_head_end);
    if (head != std::string::npos) {
        begin = std::max(begin, head + std::string(s_head_end).size());
    }
    return log.substr(begin);
}

bool is_protocol(const std::string& line)
{
    return line.rfind("DO>\t", 0) == 0 || line.rfind("UNDO>\t", 0) == 0 || line.rfind("\t* ", 0) == 0;
}

/// A function as g++ writes it: "f(X*)", where clang has "f(X *)".
std::string without_blanks_before_marks(const std::string& function)
{
    std::string spelled;
    for (const char letter : function) {
        if ((letter == '*' || letter == '&') && !spelled.empty() && spelled.back() == ' ') {
            spelled.pop_back();
        }
        spelled += letter;
    }
    return spelled;
}

std::vector<std::string> entry_lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line != s_banner && !is_protocol(line)) {
            lines.push_back(line);
        }
    }
    return lines;
}

} // namespace

LogCapture::LogCapture()
{
    const std::vector<std::string> before = unannounced_log_lines();
    for (const std::string& line : before) {
        ADD_FAILURE() << "unannounced entry in the error log: " << line;
    }
    const std::string file = log_file();
    m_begin = file.empty() ? 0 : std::filesystem::file_size(file);
}

LogCapture::~LogCapture()
{
    for (const std::string& line : lines()) {
        ADD_FAILURE() << "unexpected entry in the error log: " << line;
    }
    const std::string file = log_file();
    s_accounted = file.empty() ? 0 : std::filesystem::file_size(file);
}

std::string LogCapture::text() const
{
    const std::string file = log_file();
    return file.empty() ? std::string() : entries_since(read(file), m_begin);
}

std::vector<std::string> LogCapture::lines() const
{
    std::vector<std::string> lines = entry_lines(text());
    for (const std::string& taken : m_taken) {
        const auto found = std::find(lines.begin(), lines.end(), taken);
        if (found != lines.end()) {
            lines.erase(found);
        }
    }
    return lines;
}

bool LogCapture::take(const std::string& part)
{
    for (const std::string& line : lines()) {
        if (line.find(part) != std::string::npos) {
            m_taken.push_back(line);
            return true;
        }
    }
    return false;
}

bool LogCapture::took_assert(
    const std::string& expression, const std::string& function, const std::string& file, unsigned int line)
{
    const std::string head = file + ":" + (line ? std::to_string(line) + " ASSERT FAILED in " : "");
    const std::string tail = ": " + expression;
    for (const std::string& entry : lines()) {
        const std::size_t in = entry.find(" ASSERT FAILED in ");
        const bool matches = in != std::string::npos && entry.rfind(head, 0) == 0
            && entry.size() > tail.size() && entry.compare(entry.size() - tail.size(), tail.size(), tail) == 0
            && without_blanks_before_marks(entry.substr(in)).find(without_blanks_before_marks(function))
                != std::string::npos;
        if (matches) {
            m_taken.push_back(entry);
            return true;
        }
    }
    return false;
}

int LogCapture::count(const std::string& part) const
{
    const std::vector<std::string> all = lines();
    return static_cast<int>(std::count_if(all.begin(), all.end(),
        [&part](const std::string& line) { return line.find(part) != std::string::npos; }));
}

void LogCapture::take_all()
{
    const std::vector<std::string> all = lines();
    m_taken.insert(m_taken.end(), all.begin(), all.end());
}

std::vector<std::string> unannounced_log_lines()
{
    const std::string file = log_file();
    if (file.empty()) {
        return {};
    }
    const std::string log = read(file);
    std::vector<std::string> lines = entry_lines(entries_since(log, s_accounted));
    s_accounted = log.size();
    return lines;
}

} // namespace support
