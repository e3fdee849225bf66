#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// What the error log tells of failed assertions while the object lives. Main thread.
class LogWatch
{
public:
    LogWatch();

    /// @throws Failure if an assertion failed whose text is none of @p expected
    void check_assertions(const std::vector<std::string>& expected) const;

private:
    std::uintmax_t m_begin; // size of the log at the start
};

} // namespace fuzz
