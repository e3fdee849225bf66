#pragma once

#include <condition_variable>
#include <mutex>

namespace load {

/// Keeps threads from sending faster than the main thread takes: each batch of work needs a permit.
class Flow
{
public:
    explicit Flow(unsigned permits)
        : m_permits(permits)
    { }

    void take()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_given.wait(lock, [this] { return m_permits > 0; });
        --m_permits;
    }
    void give(unsigned permits)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_permits += permits;
        }
        m_given.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_given;
    unsigned m_permits; // guarded by m_mutex
};

} // namespace load
