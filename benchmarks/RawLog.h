#pragma once

#include <string>

/// The cheapest log there is: a file that is opened for appending, written in one piece and closed around
/// every entry. It ends the program if the file cannot be written: the figure would be worthless.
class RawLog
{
public:
    /// A file of its own in the error log's directory, so that the way to both is as long.
    RawLog();

    const std::string& file() const { return m_file; }
    void append(const std::string& text) const;
    /// The same with the calls of the system that the error log makes for an entry by itself: it also looks
    /// whether what it opened is a plain file of the user's own under one name, and follows no link.
    void append_to_own(const std::string& text) const;

private:
    void write_and_close(int descriptor, const std::string& text) const;
    [[noreturn]] void fail() const;

    std::string m_file;
    unsigned int m_user;
};
