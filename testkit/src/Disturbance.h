#pragma once

#include <cstddef>
#include <string>

namespace tarqa::housekeeping::testkit {

/// What happens to a command at one of its progress reports.
struct Disturbance
{
    enum Kind
    {
        None,
        Cancel, ///< a request that this report is the first to notice
        Expected, ///< a FailedCommandException
        Runtime, ///< a std::runtime_error
        Memory, ///< a std::bad_alloc
        Housekeeping ///< a HousekeepingException
    };

    Kind kind = None;
    std::size_t place = 0; ///< counted from 1
    bool goes_on = false; ///< at each later report below 100 per cent, too: every child of a composite fails

    /// Throws what the kind says; nothing for None and Cancel.
    void fail() const;
};

/// What the log and the breaches call it: "std::bad_alloc" for example.
std::string name_of(Disturbance::Kind kind);

} // namespace tarqa::housekeeping::testkit
