#pragma once

#include "GuardedLocker.h"

namespace tarqa::housekeeping {

/// The error log's mutex.
inline const GuardedMutex s_log_mutex{"the error log's mutex",
    "while an ErrorProtocolOutput lives, its thread logs nothing else, runs no command and takes no other "
    "lock: keep it to one statement."};

/**
 * Marks the calling thread as the holder of the error log while it lives: it holds the log's mutex, or is
 * writing the head of a new log. What the thread logs meanwhile goes to the standard error stream, where it
 * would otherwise wait for itself.
 */
class LogHolder
{
public:
    LogHolder()
        : m_outer(s_held)
    {
        s_held = true;
    }
    ~LogHolder() { s_held = m_outer; }
    LogHolder(const LogHolder&) = delete;
    LogHolder& operator=(const LogHolder&) = delete;

    static bool is_this_thread() { return s_held; }

private:
    static inline thread_local bool s_held = false;

    bool m_outer;
};

} // namespace tarqa::housekeeping
