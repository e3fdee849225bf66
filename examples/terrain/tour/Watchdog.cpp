#include "tour/Watchdog.h"

#include <utility>

namespace terrain {

Watchdog::Watchdog(std::chrono::milliseconds patience, std::function<void()> alarm)
    : m_patience(patience)
    , m_alarm(std::move(alarm))
    , m_deadline(std::chrono::steady_clock::now() + patience)
    , m_thread([this] { watch(); })
{ }

Watchdog::~Watchdog()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ended = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void Watchdog::alive()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_deadline = std::chrono::steady_clock::now() + m_patience;
}

void Watchdog::watch()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_ended && std::chrono::steady_clock::now() < m_deadline) {
        const auto deadline = m_deadline; // it moves while nobody holds the lock
        m_changed.wait_until(lock, deadline);
    }
    if (!m_ended) {
        lock.unlock();
        m_alarm();
    }
}

} // namespace terrain
