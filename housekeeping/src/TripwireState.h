#pragma once

#include <atomic>

namespace tarqa::housekeeping {

/// Whether the tripwire is on, for the places that ask with every lock.
class TripwireState
{
public:
    static bool is_on() { return s_value.load(std::memory_order_relaxed) != Off && is_on_or_asks(); }
    static void set(bool on) { s_value = on ? On : Off; }

private:
    enum Value
    {
        Off = 0,
        Unasked, ///< the environment has not been looked at
        On
    };

    static bool is_on_or_asks();

    static std::atomic<int> s_value;
};

} // namespace tarqa::housekeeping
