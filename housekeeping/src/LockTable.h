#pragma once

#include "CallStack.h"

#include <QtCore/QMutex>

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace tarqa::housekeeping {

struct GuardedMutex;

/**
 * What the tripwire knows: who holds which mutex, and who waits for which. An entry of a holder is there only
 * while it really holds the mutex, so a circle of threads of which each waits for what the next one holds is
 * one for ever; whoever closes it finds it.
 *
 * Any thread. Its own mutex is taken under all others, and nothing is taken or written under it. Never
 * destroyed: locks are taken until the very end.
 */
class LockTable
{
public:
    static LockTable& instance();

    /// The calling thread is about to ask for a mutex. @return what is to be said if that is for ever
    std::string wait(const QMutex& mutex, const GuardedMutex& what);
    /// What is to be said if the calling thread has to wait for long for the mutex that it asked for.
    std::string long_wait() const;
    /// It has got the mutex that it asked for.
    void hold(const QMutex& mutex);
    /// It is about to unlock the mutex.
    void release(const QMutex& mutex);
    /// What is to be said if the calling thread holds the mutex, which it does not ask for.
    std::string avoided(const QMutex& mutex, const GuardedMutex& what) const;

    /// What the calling thread runs, as a line; empty: nothing any more.
    void run(const std::string& line);

    void clear();

private:
    struct Holder
    {
        long thread;
        bool is_main_thread;
        int depth; // of a recursive mutex
        CallStack since;
    };
    struct Waiter
    {
        const QMutex* p_mutex;
        const GuardedMutex* p_what;
        bool is_main_thread;
        CallStack place;
    };
    /// One thread that waits, and who holds what it waits for, if that is known.
    struct Link
    {
        long thread;
        Waiter waiter;
        bool is_held;
        Holder holder;
        std::string runs;
    };

    LockTable() = default;
    Link link_locked(long thread, const Waiter& waiter) const;
    std::string runs_locked(long thread) const;
    std::vector<Link> circle_locked(long thread) const;
    static std::string text_of(const Link& link);

    mutable std::mutex m_mutex;
    std::map<const QMutex*, Holder> m_holders; // guarded by m_mutex
    std::map<long, Waiter> m_waiters; // by thread; guarded by m_mutex
    std::map<long, std::string> m_runs; // by thread; guarded by m_mutex
};

} // namespace tarqa::housekeeping
