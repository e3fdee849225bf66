#pragma once

#include <string>
#include <vector>

namespace tarqa::housekeeping {

/// The calls that led to a place in the program. Quick to take: the functions get their names only when
/// somebody reads it.
class CallStack
{
public:
    /// The calling thread's.
    static CallStack here();

    /// A line for each function, the innermost first, as far as the platform knows their names; without the
    /// innermost ones that have no name, which are the library's own.
    std::string text() const;

private:
    std::vector<void*> m_calls; // return addresses
};

} // namespace tarqa::housekeeping
