#pragma once

#include <atomic>

namespace tarqa::housekeeping {

/// Whether the tripwire is on, for the places that ask with every lock.
class TripwireState
{
public:
    static bool is_on()
    {
        const int value = s_value.load(std::memory_order_relaxed);
        return value == On || (value == Unasked && ask_environment());
    }
    static void set(bool on) { s_value = on ? On : Off; }

private:
    enum Value
    {
        Unasked, ///< the environment has not been looked at
        Off,
        On
    };

    static bool ask_environment();

    static std::atomic<int> s_value;
};

} // namespace tarqa::housekeeping
