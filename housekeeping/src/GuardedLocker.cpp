#include "GuardedLocker.h"

#include "DyingProgram.h"
#include "LockTable.h"

#include <iostream>

namespace tarqa::housekeeping::guarded {

namespace {

const int s_patience = 1000; // milliseconds

/// Nothing that the tripwire does may keep a lock from being taken: what it throws costs its words only.
template <class Function>
bool quietly(Function function)
{
    try {
        return function();
    } catch (...) {
        return false;
    }
}

bool say(const std::string& text)
{
    if (!text.empty()) {
        std::cerr << text << std::flush;
    }
    return !text.empty();
}

} // namespace

void lock_watched(QMutex& mutex, const GuardedMutex& what)
{
    LockTable& table = LockTable::instance();
    const bool for_ever = quietly([&] { return say(table.wait(mutex, what)); });
    if (for_ever || !dying_program::is_main_thread()) {
        mutex.lock();
    } else if (!mutex.tryLock(s_patience)) {
        quietly([&] { return say(table.long_wait()); });
        mutex.lock();
    }
    quietly([&] {
        table.hold(mutex);
        return true;
    });
}

void unlock_watched(QMutex& mutex)
{
    LockTable::instance().release(mutex);
    mutex.unlock();
}

void avoided(const QMutex& mutex, const GuardedMutex& what)
{
    if (TripwireState::is_on()) {
        quietly([&] { return say(LockTable::instance().avoided(mutex, what)); });
    }
}

} // namespace tarqa::housekeeping::guarded
