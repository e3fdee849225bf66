#include "LogReading.h"

#include "Host.h"

#include <algorithm>
#include <string_view>

namespace kills {

namespace {

const std::string s_head_end = "************ ERROR LOG BEGIN  ************ \n";
const std::string s_banner = "************** END OF ERROR LOG ***************\n";
const std::string s_start_up_lines[]
    = {"post-Qt init Path: ", "Background rendering is ON\n", "Background rendering is OFF\n"};

/// Whether one begins with the other.
bool agree(std::string_view one, std::string_view other)
{
    const std::size_t length = std::min(one.size(), other.size());
    return one.substr(0, length) == other.substr(0, length);
}

class Reader
{
public:
    Reader(std::string_view entries, LogReading& reading)
        : m_rest(entries)
        , m_reading(reading)
    { }

    void read()
    {
        while (!m_rest.empty() && (take_start_up_line() || take_entry() || take_banner())) { }
        if (m_rest.empty()) {
            return;
        }
        const bool is_cut = agree(m_rest, entry_text(false, m_reading.main + 1))
            || agree(m_rest, entry_text(true, m_reading.worker + 1)) || agree(m_rest, s_banner)
            || (m_rest.find('\n') == std::string_view::npos && begins_a_start_up_line());
        if (is_cut && !m_reading.has_banner) {
            m_reading.has_cut_entry = true;
        } else {
            m_reading.violations.push_back("in the log after " + std::to_string(m_reading.main) + " and "
                + std::to_string(m_reading.worker) + " entries: " + std::string(m_rest.substr(0, 200)));
        }
    }

private:
    bool take(const std::string& text)
    {
        if (m_rest.substr(0, text.size()) != text) {
            return false;
        }
        m_rest.remove_prefix(text.size());
        return true;
    }

    bool begins_a_start_up_line() const
    {
        return std::any_of(std::begin(s_start_up_lines), std::end(s_start_up_lines),
            [this](const std::string& line) { return agree(m_rest, line); });
    }

    bool take_start_up_line()
    {
        const std::size_t end = m_rest.find('\n');
        if (m_reading.main + m_reading.worker > 0 || end == std::string_view::npos
            || !begins_a_start_up_line()) {
            return false;
        }
        m_rest.remove_prefix(end + 1);
        return true;
    }

    bool take_entry()
    {
        if (m_reading.has_banner) {
            return false;
        }
        if (take(entry_text(false, m_reading.main + 1))) {
            ++m_reading.main;
            return true;
        }
        if (take(entry_text(true, m_reading.worker + 1))) {
            ++m_reading.worker;
            return true;
        }
        return false;
    }

    bool take_banner()
    {
        if (m_reading.has_banner || !take(s_banner)) {
            return false;
        }
        m_reading.has_banner = true;
        return true;
    }

    std::string_view m_rest;
    LogReading& m_reading;
};

} // namespace

LogReading read_log(const std::string& text, const std::string& head)
{
    LogReading reading;
    if (text.compare(0, head.size(), head) == 0) {
        reading.has_head = true;
        Reader(std::string_view(text).substr(head.size()), reading).read();
    } else if (agree(text, head)) {
        reading.has_cut_head = true;
    } else {
        reading.violations.push_back("a log begins with: " + text.substr(0, 200));
    }
    return reading;
}

std::string head_of(const std::string& text)
{
    const std::size_t end = text.find(s_head_end);
    return end == std::string::npos ? std::string() : text.substr(0, end + s_head_end.size());
}

} // namespace kills
