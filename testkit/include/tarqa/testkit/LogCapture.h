#pragma once

#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <memory>
#include <string>
#include <vector>

namespace tarqa::housekeeping::testkit {

class LogEntries;

/**
 * What is written into the error log while the object lives. Says which entries nobody announced, for a test
 * that fails on them:
 *
 *     LogCapture log;
 *     log.announce("no such file");
 *     code_under_test();
 *     EXPECT_TRUE(log.unannounced().empty());
 *     EXPECT_TRUE(log.missing().empty());
 *
 * Protocol lines of command runs ("DO>", "UNDO>", and the lines of children) do not count. Captures may be
 * nested; each sees everything. What was written while no capture lived is kept for unannounced_log_lines().
 *
 * One thread. Entries of other threads are seen as well, as soon as they are written.
 */
class TQ_HK_TESTKIT_EXPORT LogCapture
{
public:
    LogCapture();
    /// All that was written until now counts as seen, announced or not.
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Expects an entry that holds @p part, once for each call, before or after it is written.
    void announce(const std::string& part);
    /// The lines written since the capture began that are neither announced nor taken.
    std::vector<std::string> unannounced() const;
    /// What was announced and is not written yet.
    std::vector<std::string> missing() const;

    /// Everything written since the capture began, as it stands in the file.
    std::string text() const;
    /// The lines written since the capture began that were not taken yet, announced or not.
    std::vector<std::string> lines() const;
    /// Takes the first line that holds @p part; false if there is none.
    bool take(const std::string& part);
    /// Takes the first entry of a failed assertion whose condition is exactly @p expression, whose function's
    /// signature holds @p function and whose source file is @p file; @p line 0 stands for any line.
    bool took_assert(const std::string& expression, const std::string& function, const std::string& file,
        unsigned int line = 0);
    /// How many lines that were not taken yet hold @p part.
    int count(const std::string& part) const;
    /// Takes whatever has been written so far, for tests about something else.
    void take_all();

private:
    std::vector<std::string> compare(std::vector<std::string>& missing) const;

    std::unique_ptr<LogEntries> m_p_entries;
    std::vector<std::string> m_announced;
};

/// The lines of the error log that were written outside of all captures, since the last call; for the end of
/// each test. Main thread.
TQ_HK_TESTKIT_EXPORT std::vector<std::string> unannounced_log_lines();

} // namespace tarqa::housekeeping::testkit
