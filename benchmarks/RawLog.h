#pragma once

#include <string>

/// The cheapest log there is: a file that is opened for appending, written in one piece and closed around
/// every entry.
class RawLog
{
public:
    /// A file of its own in the error log's directory, so that the way to both is as long.
    RawLog();

    const std::string& file() const { return m_file; }
    /// Ends the program if the file cannot be written: the figure would be worthless.
    void append(const std::string& text) const;

private:
    std::string m_file;
};
