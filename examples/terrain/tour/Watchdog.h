#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace terrain {

/// Calls for help when nobody has shown a sign of life for some time, once, from a thread of its own.
class Watchdog
{
public:
    /// @param alarm called in the watchdog's thread
    Watchdog(std::chrono::milliseconds patience, std::function<void()> alarm);
    /// Never waits longer than for an alarm that is being raised.
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// A sign of life. Any thread.
    void alive();

private:
    void watch();

    const std::chrono::milliseconds m_patience;
    const std::function<void()> m_alarm;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::chrono::steady_clock::time_point m_deadline; // guarded by m_mutex
    bool m_ended = false; // guarded by m_mutex
    std::thread m_thread; // last, so that the others exist when it starts
};

} // namespace terrain
