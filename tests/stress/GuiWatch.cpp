#include "GuiWatch.h"

namespace load {

GuiWatch::GuiWatch(const std::vector<GuiCall>& calls)
    : m_calls(calls)
    , m_waits_of_calls(calls.size())
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(1);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(beat()));
}

void GuiWatch::run_until(const std::function<bool()>& finished)
{
    m_finished = finished;
    m_last = Clock::now();
    m_last_for_processor = waited_for_processor();
    m_timer.start();
    m_loop.exec();
    m_timer.stop();
}

void GuiWatch::beat()
{
    for (std::size_t at = 0; at < m_calls.size(); ++at) {
        const double for_processor = waited_for_processor();
        const Clock::time_point begin = Clock::now();
        m_calls[at].call();
        const double wait = milliseconds_between(begin, Clock::now());
        m_waits_of_calls[at].add(wait, waited_for_processor() - for_processor);
    }
    const Clock::time_point now = Clock::now();
    const double for_processor = waited_for_processor();
    m_waits.add(milliseconds_between(m_last, now), for_processor - m_last_for_processor);
    m_last = now;
    m_last_for_processor = for_processor;
    if (m_finished()) {
        m_loop.quit();
    }
}

} // namespace load
