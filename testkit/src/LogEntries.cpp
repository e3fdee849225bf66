#include "LogEntries.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>

namespace tarqa::housekeeping::testkit {

namespace {

const char* const s_head_end = "************ ERROR LOG BEGIN  ************ \n";
const char* const s_banner = "************** END OF ERROR LOG ***************";
const std::size_t s_remembered = 256; // bytes before the begin, by which an emptied file is known

std::string contents_from(const std::string& file, std::size_t begin)
{
    if (file.empty()) {
        return {};
    }
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(begin));
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::size_t size_of(const std::string& file)
{
    if (file.empty()) {
        return 0;
    }
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    return stream ? static_cast<std::size_t>(stream.tellg()) : 0;
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

LogEntries::LogEntries(File file, bool from_start)
    : m_file(std::move(file))
{
    if (!from_start) {
        restart();
    }
}

void LogEntries::restart()
{
    const std::string file = m_file();
    m_begin = size_of(file);
    m_before = contents_from(file, m_begin - std::min(m_begin, s_remembered));
    m_before.resize(std::min(m_before.size(), m_begin)); // somebody may have written in between
}

/// Whether the part of the log that begins with what stood before is another one now.
bool LogEntries::was_emptied(const std::string& log) const
{
    return log.compare(0, m_before.size(), m_before) != 0;
}

std::string LogEntries::text() const
{
    const std::string file = m_file();
    std::string log = contents_from(file, m_begin - m_before.size());
    if (was_emptied(log)) {
        log = contents_from(file, 0);
    } else {
        log.erase(0, m_before.size());
    }
    const std::size_t head = log.find(s_head_end);
    return head == std::string::npos ? log : log.substr(head + std::string(s_head_end).size());
}

std::vector<std::string> LogEntries::lines() const
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

bool LogEntries::take(const std::string& part)
{
    for (const std::string& line : lines()) {
        if (line.find(part) != std::string::npos) {
            m_taken.push_back(line);
            return true;
        }
    }
    return false;
}

bool LogEntries::take_assert(
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

int LogEntries::count(const std::string& part) const
{
    const std::vector<std::string> all = lines();
    return static_cast<int>(std::count_if(all.begin(), all.end(),
        [&part](const std::string& line) { return line.find(part) != std::string::npos; }));
}

void LogEntries::take_all()
{
    const std::vector<std::string> all = lines();
    m_taken.insert(m_taken.end(), all.begin(), all.end());
}

std::vector<std::string> LogEntries::next()
{
    std::vector<std::string> lines = entry_lines(text());
    m_taken.clear();
    restart();
    return lines;
}

} // namespace tarqa::housekeeping::testkit
