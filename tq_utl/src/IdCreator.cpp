#include <tarqa/utilities/IdCreator.h>

namespace tarqa::utilities {

namespace {

constexpr unsigned long long s_block = 64; // numbers

// Instead of a thread's number.
constexpr unsigned long long s_nobody_yet = ~0ULL;
constexpr unsigned long long s_nobody_ever = s_nobody_yet - 1;

std::atomic<unsigned long long> s_last_thread{0};
thread_local unsigned long long t_thread = 0; // 0: has none yet

/// Told by no other thread of the program, not even after this one has ended.
unsigned long long number_of_thread()
{
    if (t_thread == 0) {
        t_thread = s_last_thread.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    return t_thread;
}

} // namespace

IdCreator::IdCreator(Order order)
    : m_home(order == Order::InTime ? s_nobody_ever : s_nobody_yet)
{ }

IdCreator::~IdCreator() = default;

unsigned long long IdCreator::createNextId()
{
    // The other two members are touched by the home thread only.
    if (m_home.load(std::memory_order_relaxed) == t_thread && m_next_at_home != m_end_at_home) {
        return m_next_at_home++;
    }
    return draw();
}

/// From what the threads share: a block for the home thread, which is the first one that comes here, and
/// single numbers for the others.
unsigned long long IdCreator::draw()
{
    // Only the number itself has to be unique; nothing else is published with it.
    const unsigned long long thread = number_of_thread();
    unsigned long long home = s_nobody_yet;
    if (!m_home.compare_exchange_strong(home, thread, std::memory_order_relaxed) && home != thread) {
        return m_last.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    const unsigned long long number = m_last.fetch_add(s_block, std::memory_order_relaxed) + 1;
    m_next_at_home = number + 1;
    m_end_at_home = number + s_block;
    return number;
}

} // namespace tarqa::utilities
