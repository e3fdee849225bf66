#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace tarqa::housekeeping::testkit {

/**
 * What is appended to a log file from now on, line by line, without the protocol lines of command runs.
 *
 * Needs nothing of the framework, so that the tests of the libraries below it can have it, too. One thread.
 */
class LogEntries
{
public:
    /// The file's path, or an empty text while there is none.
    typedef std::function<std::string()> File;

    /// @param from_start whether what stands in the file already counts
    explicit LogEntries(File file, bool from_start = false);

    /// Everything written since, as it stands in the file; all of the file if it was emptied meanwhile.
    std::string text() const;
    /// The lines that were not taken yet.
    std::vector<std::string> lines() const;
    bool take(const std::string& part);
    bool take_assert(const std::string& expression, const std::string& function, const std::string& file,
        unsigned int line);
    int count(const std::string& part) const;
    void take_all();

    /// The lines written since, all of them; from now on only later ones count.
    std::vector<std::string> next();
    /// Only what is written from now on counts.
    void restart();

private:
    bool was_emptied(const std::string& log) const;

    File m_file;
    std::size_t m_begin = 0; // in bytes
    std::string m_before; // what stood right before it
    std::vector<std::string> m_taken;
};

} // namespace tarqa::housekeeping::testkit
