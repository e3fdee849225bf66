#pragma once

#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>

namespace support {

/// Makes @p Singleton and runs the ordered destruction. @return whether the singleton outlives phase 4 and is
/// gone when phase 6 begins
template <class Singleton>
bool goes_in_phase_five()
{
    using tarqa::housekeeping::TestAccess;
    static bool s_alive_in_phase_4 = false;
    static bool s_alive_in_phase_6 = true;
    // Inside a phase the last one entered is called first, so the first probe is the last of its phase and
    // the second probe the first of its own.
    pkBase::pkDestructor(
        pkBase::pkDestructionPhase(4), [] { s_alive_in_phase_4 = TestAccess::peek<Singleton>() != nullptr; });
    Singleton::instance();
    pkBase::pkDestructor(
        pkBase::pkDestructionPhase(6), [] { s_alive_in_phase_6 = TestAccess::peek<Singleton>() != nullptr; });
    pkBase::pkDestructor::run();
    return s_alive_in_phase_4 && !s_alive_in_phase_6;
}

} // namespace support
