#include "LockTable.h"

#include "DyingProgram.h"
#include "GuardedLocker.h"

#include <tarqa/housekeeping/Tripwire.h>

#include <utility>

namespace tarqa::housekeeping {

namespace {

const char* const s_head = "TRIPWIRE: ";

std::string name_of(long thread, bool is_main_thread)
{
    return "thread " + std::to_string(thread) + (is_main_thread ? " (the main thread)" : "");
}

} // namespace

LockTable& LockTable::instance()
{
    static LockTable* const s_p_table = new LockTable; // leaked
    return *s_p_table;
}

std::string LockTable::wait(const QMutex& mutex, const GuardedMutex& what)
{
    const long thread = dying_program::this_thread();
    const Waiter waiter{&mutex, &what, dying_program::is_main_thread(), CallStack::here()};
    std::vector<Link> circle;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto holder = m_holders.find(&mutex);
        const bool is_free_to_it
            = what.recursive && holder != m_holders.end() && holder->second.thread == thread;
        m_waiters.insert_or_assign(thread, waiter);
        if (!is_free_to_it) {
            circle = circle_locked(thread);
        }
    }
    if (circle.empty()) {
        return std::string();
    }
    std::string text = s_head;
    text += circle.size() == 1 ? name_of(thread, waiter.is_main_thread) + " waits for itself, for ever.\n"
                               : std::to_string(circle.size()) + " threads wait for each other, for ever.\n";
    for (const Link& link : circle) {
        text += text_of(link);
    }
    return text;
}

std::string LockTable::long_wait() const
{
    const long thread = dying_program::this_thread();
    Link link = {};
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto waiter = m_waiters.find(thread);
        if (waiter == m_waiters.end() || !circle_locked(thread).empty()) { // the latter has been said
            return std::string();
        }
        link = link_locked(thread, waiter->second);
        if (link.is_held) {
            link.runs += runs_locked(link.holder.thread);
        }
    }
    return std::string(s_head) + "the main thread has waited for more than a second.\n" + text_of(link);
}

void LockTable::hold(const QMutex& mutex)
{
    const long thread = dying_program::this_thread();
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto waiter = m_waiters.find(thread);
    if (waiter == m_waiters.end() || !Tripwire::enabled()) { // was switched off meanwhile
        return;
    }
    const auto [holder, is_first] = m_holders.try_emplace(
        &mutex, Holder{thread, waiter->second.is_main_thread, 0, std::move(waiter->second.place)});
    ++holder->second.depth;
    m_waiters.erase(waiter);
}

void LockTable::release(const QMutex& mutex)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto holder = m_holders.find(&mutex);
    if (holder != m_holders.end() && --holder->second.depth == 0) {
        m_holders.erase(holder);
    }
}

std::string LockTable::avoided(const QMutex& mutex, const GuardedMutex& what) const
{
    const long thread = dying_program::this_thread();
    const Waiter waiter{&mutex, &what, dying_program::is_main_thread(), CallStack::here()};
    Link link = {};
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        link = link_locked(thread, waiter);
    }
    if (!link.is_held || link.holder.thread != thread) {
        return std::string();
    }
    return s_head + name_of(thread, waiter.is_main_thread)
        + " would wait for itself: what it logs goes to the standard error stream.\n" + text_of(link);
}

void LockTable::run(const std::string& line)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (line.empty() || !Tripwire::enabled()) {
        m_runs.erase(dying_program::this_thread());
    } else {
        m_runs[dying_program::this_thread()] = line;
    }
}

void LockTable::clear()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_holders.clear();
    m_waiters.clear();
    m_runs.clear();
}

LockTable::Link LockTable::link_locked(long thread, const Waiter& waiter) const
{
    const auto holder = m_holders.find(waiter.p_mutex);
    const bool is_held = holder != m_holders.end();
    return Link{thread, waiter, is_held, is_held ? holder->second : Holder{}, runs_locked(thread)};
}

std::string LockTable::runs_locked(long thread) const
{
    const auto run = m_runs.find(thread);
    return run == m_runs.end() ? std::string() : run->second;
}

/// From this thread to whom it waits for, and so on back to this thread; empty if it is not led back.
std::vector<LockTable::Link> LockTable::circle_locked(long thread) const
{
    std::vector<Link> links;
    long next = thread;
    do {
        const auto waiter = m_waiters.find(next);
        if (waiter == m_waiters.end() || links.size() == m_waiters.size()) {
            return {}; // in the second case others have closed a circle that this thread waits for
        }
        links.push_back(link_locked(next, waiter->second));
        if (!links.back().is_held) {
            return {};
        }
        next = links.back().holder.thread;
    } while (next != thread);
    return links;
}

std::string LockTable::text_of(const Link& link)
{
    const GuardedMutex& what = *link.waiter.p_what;
    std::string text
        = name_of(link.thread, link.waiter.is_main_thread) + " asks for " + what.name + ", which ";
    text[0] = 'T';
    if (!link.is_held) {
        text += "was locked when the tripwire was off.\nAsked from:\n";
    } else if (link.holder.thread == link.thread) {
        text += "it has held since:\n" + link.holder.since.text() + "Asked again from:\n";
    } else {
        text += name_of(link.holder.thread, link.holder.is_main_thread) + " has held since:\n"
            + link.holder.since.text() + "Asked from:\n";
    }
    return text + link.waiter.place.text() + "Rule: " + what.rule + '\n' + link.runs;
}

} // namespace tarqa::housekeeping
