#pragma once

#include <memory>
#include <string>
#include <vector>

namespace tarqa::housekeeping::testkit {
class LogEntries;
}

namespace support {

/**
 * What is written to the error log while the object lives. Each line that the test expects is taken out with
 * take() or took_assert(); a line that nobody took fails the test when the object goes. Protocol lines of
 * command runs
 * ("DO>", "UNDO>", and the lines of children) need not be taken.
 *
 * Lines that are written while no capture lives fail the test as well (see the listener in main.cpp).
 *
 * The kit's LogCapture is the same for hosts; this one has an account of its own, does without the framework,
 * and finds the log in the private home, also after the log's end.
 */
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Everything written since the capture began, as it stands in the file.
    std::string text() const;

    /// The lines written since the capture began that nobody took yet.
    std::vector<std::string> lines() const;

    /// Takes the first line that holds @p part; false if there is none.
    bool take(const std::string& part);

    /// Takes the first entry of a failed assertion whose condition is exactly @p expression, whose function's
    /// signature holds @p function and whose source file is @p file; @p line 0 stands for any line.
    bool took_assert(const std::string& expression, const std::string& function, const std::string& file,
        unsigned int line = 0);

    /// How many lines that nobody took yet hold @p part.
    int count(const std::string& part) const;

    /// Takes whatever has been written so far, for tests about something else.
    void take_all();

private:
    std::unique_ptr<tarqa::housekeeping::testkit::LogEntries> m_p_entries;
};

/// Lines of all logs of this process that no capture has accounted for; the listener in main.cpp asks once
/// per test.
std::vector<std::string> unannounced_log_lines();

} // namespace support
