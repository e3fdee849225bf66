#pragma once

#include "TripwireState.h"

#include <QtCore/QMutex>

namespace tarqa::housekeeping {

/// What the tripwire says of a mutex. Literals; lives as long as the program.
struct GuardedMutex
{
    const char* name; ///< in "asks for the command manager's mutex"
    const char* rule; ///< a sentence: what nobody may do while it is held
    bool recursive = false;
};

/// Mutexes under which others' code runs are locked and unlocked with these, for the tripwire to know. While
/// it is off they do nothing more than the mutex itself, but for looking whether it is.
namespace guarded {

// While the tripwire is on.
void lock_watched(QMutex& mutex, const GuardedMutex& what);
void unlock_watched(QMutex& mutex);

/// @param what the same for each call with this mutex
inline void lock(QMutex& mutex, const GuardedMutex& what)
{
    if (TripwireState::is_on()) {
        lock_watched(mutex, what);
    } else {
        mutex.lock();
    }
}

inline void unlock(QMutex& mutex)
{
    if (TripwireState::is_on()) {
        unlock_watched(mutex);
    } else {
        mutex.unlock();
    }
}

/// Tells the tripwire that the thread did not lock @p mutex, because it may hold it already: named if so.
void avoided(const QMutex& mutex, const GuardedMutex& what);

} // namespace guarded

/// Holds a guarded mutex as long as it lives.
class GuardedLocker
{
public:
    /// @param p_mutex null: none
    GuardedLocker(QMutex* p_mutex, const GuardedMutex& what)
        : m_p_mutex(p_mutex)
    {
        if (m_p_mutex) {
            guarded::lock(*m_p_mutex, what);
        }
    }
    ~GuardedLocker()
    {
        if (m_p_mutex) {
            guarded::unlock(*m_p_mutex);
        }
    }
    GuardedLocker(const GuardedLocker&) = delete;
    GuardedLocker& operator=(const GuardedLocker&) = delete;

private:
    QMutex* m_p_mutex; // not owned
};

} // namespace tarqa::housekeeping
