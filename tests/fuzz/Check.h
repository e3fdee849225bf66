#pragma once

#include <stdexcept>
#include <string>

namespace fuzz {

/// What must hold whatever the input does not hold.
class Failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// @throws Failure with the text @p what if a condition does not hold
inline void check(bool holds, const std::string& what)
{
    if (!holds) {
        throw Failure(what);
    }
}

} // namespace fuzz
