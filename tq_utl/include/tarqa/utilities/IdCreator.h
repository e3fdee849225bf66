#pragma once

#include <tarqa/utilities/tq_utl_export.h>

#include <atomic>

namespace tarqa::utilities {

/**
 * A sequence of fresh numbers: 1, 2, 3, … Never 0, never one twice in the life of the object. Any thread.
 */
class TQ_UTL_EXPORT IdCreator
{
public:
    IdCreator() = default;
    IdCreator(const IdCreator&) = delete; // a copy would hand out the same numbers again
    IdCreator& operator=(const IdCreator&) = delete;
    virtual ~IdCreator();

    /// The next number.
    unsigned long long createNextId();

private:
    std::atomic<unsigned long long> m_last{0};
};

} // namespace tarqa::utilities
