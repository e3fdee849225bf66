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
    /// How the numbers ascend.
    enum class Order
    {
        InTime, ///< a later number is the greater one, whichever thread gets it
        /// Cheaper: a thread's numbers ascend, but may be smaller than those that another one got before.
        /// None is left out as long as only one thread asks.
        InEachThread
    };

    /// @param order of the numbers, for as long as the object lives
    explicit IdCreator(Order order = Order::InTime);
    IdCreator(const IdCreator&) = delete; // a copy would hand out the same numbers again
    IdCreator& operator=(const IdCreator&) = delete;
    virtual ~IdCreator();

    /// The next number.
    unsigned long long createNextId();

private:
    unsigned long long draw();

    std::atomic<unsigned long long> m_last{0}; // in use or in the home thread's block
    std::atomic<unsigned long long> m_home; // the thread that draws by the block
    unsigned long long m_next_at_home = 0; // in its block; of that thread only, as the next
    unsigned long long m_end_at_home = 0;
};

} // namespace tarqa::utilities
