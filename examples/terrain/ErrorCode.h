#pragma once

namespace terrain {

/// The codes of the host's own exceptions.
enum ErrorCode : unsigned int
{
    CannotRead = 20001,
    CannotWrite = 20002,
    CannotCompute = 20003
};

} // namespace terrain
