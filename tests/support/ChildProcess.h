#pragma once

#include <functional>
#include <string>

#include <sys/types.h>

namespace support {

/**
 * A forked copy of the test process. It runs a function, reports the text that the function gives, and stays
 * until it is told to go or killed. What it is to clean up after itself, a second function does.
 */
class ChildProcess
{
public:
    /// Starts it; an exception that leaves @p work is reported as "exception".
    /// @param end called when it is told to go
    explicit ChildProcess(
        const std::function<std::string()>& work, const std::function<void()>& end = [] {});
    /// Kills it if it is still there.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// What the function gave; waits for it. Empty if the process died before.
    const std::string& report();
    /// Waits until it has ended of its own accord. @return its exit code, 0 unless something went wrong; -1
    /// if it was killed
    int let_go();
    /// Ends it by force.
    void kill();
    pid_t id() const { return m_id; }

private:
    int wait();

    pid_t m_id;
    int m_from_child;
    int m_to_child;
    bool m_reported = false;
    bool m_ended = false;
    std::string m_report;
};

} // namespace support
