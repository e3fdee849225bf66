#include "tour/Gate.h"

namespace terrain {

Gate::Gate(unsigned int percentage)
    : m_percentage(percentage)
{ }

void Gate::close()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_closed = true;
}

void Gate::open()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_closed = false;
    }
    m_changed.notify_all();
}

bool Gate::holds() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_holds;
}

void Gate::open_run(unsigned int) { }

void Gate::set_percentage(unsigned int percentage)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (percentage < m_percentage) {
        return;
    }
    m_holds = m_closed;
    m_changed.wait(lock, [this] { return !m_closed; });
    m_holds = false;
}

void Gate::set_text(const QString&) { }

void Gate::close_run() { }

} // namespace terrain
