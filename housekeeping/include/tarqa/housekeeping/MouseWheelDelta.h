#pragma once

namespace tarqa::housekeeping {

/// The direction of a mouse wheel.
enum MouseWheelDelta : int
{
    WheelEither = 0,
    WheelUp = 1,
    WheelDown = 2
};

} // namespace tarqa::housekeeping
