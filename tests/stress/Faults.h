#pragma once

#include <mutex>
#include <string>
#include <vector>

namespace load {

/// What went wrong under load. Any thread.
class Faults
{
public:
    void add(const std::string& text)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_count;
        if (m_texts.size() < s_kept) {
            m_texts.push_back(text);
        }
    }
    /// Adds a fault unless both are the same. T is a number or a text.
    template <class T>
    void compare(const std::string& what, const T& expected, const T& actual)
    {
        if (!(expected == actual)) {
            add(what + ": expected " + shown(expected) + ", got " + shown(actual));
        }
    }

    unsigned long long count() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_count;
    }
    /// The first ones.
    std::vector<std::string> texts() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_texts;
    }

private:
    static constexpr std::size_t s_kept = 20; // one cause can have very many effects

    static std::string shown(const std::string& text) { return '"' + text.substr(0, 200) + '"'; }
    static std::string shown(unsigned long long number) { return std::to_string(number); }

    mutable std::mutex m_mutex;
    unsigned long long m_count = 0; // guarded by m_mutex
    std::vector<std::string> m_texts; // guarded by m_mutex
};

} // namespace load
