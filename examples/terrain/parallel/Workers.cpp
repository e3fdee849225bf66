#include "parallel/Workers.h"

#include <algorithm>
#include <new>
#include <system_error>
#include <utility>

namespace terrain {

namespace {

const int s_cells_worth_a_thread = 1 << 15; ///< many times what waking one costs

} // namespace

Workers::Workers()
    : Workers(static_cast<int>(std::thread::hardware_concurrency()))
{ }

Workers::Workers(int threads)
    : m_threads(std::max(threads, 1)) // the number of cores may be unknown
{ }

Workers::~Workers()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ends = true;
    }
    m_begun.notify_all();
    for (std::thread& helper : m_helpers) {
        helper.join();
    }
}

void Workers::run(std::size_t parts, const std::function<void(std::size_t part)>& work)
{
    if (parts > 1) {
        start_threads();
    }
    std::unique_lock<std::mutex> lock(m_mutex);
    m_p_work = &work;
    m_next = 0;
    m_parts = parts;
    m_unfinished = parts;
    m_failure = nullptr;
    if (parts > 1) {
        m_begun.notify_all();
    }
    work_on(lock);
    m_done.wait(lock, [this] { return m_unfinished == 0; });
    if (m_failure) {
        std::rethrow_exception(std::exchange(m_failure, nullptr));
    }
}

void Workers::run_rows(int rows, int rows_of_part, const std::function<void(int first, int end)>& work)
{
    const int parts = rows / rows_of_part + (rows % rows_of_part == 0 ? 0 : 1);
    run(static_cast<std::size_t>(parts), [&](std::size_t part) {
        const int first = static_cast<int>(part) * rows_of_part;
        work(first, first + std::min(rows_of_part, rows - first));
    });
}

void Workers::start_threads()
{
    if (std::exchange(m_started, true)) {
        return;
    }
    try {
        m_helpers.reserve(static_cast<std::size_t>(m_threads - 1));
        while (m_helpers.size() + 1 < static_cast<std::size_t>(m_threads)) {
            m_helpers.emplace_back([this] { serve(); });
        }
    } catch (const std::system_error&) { // with those that there are
    } catch (const std::bad_alloc&) { }
}

/// What the other threads do.
void Workers::serve()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (true) {
        m_begun.wait(lock, [this] { return m_ends || m_next < m_parts; });
        if (m_ends) {
            return;
        }
        work_on(lock);
    }
}

/// Does parts until there are none that nobody has begun.
void Workers::work_on(std::unique_lock<std::mutex>& lock)
{
    while (m_next < m_parts) {
        const std::size_t part = m_next++;
        const auto& work = *m_p_work;
        lock.unlock();
        std::exception_ptr failure;
        try {
            work(part);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        --m_unfinished;
        if (failure) {
            m_failure = m_failure ? m_failure : failure;
            m_unfinished -= m_parts - m_next; // nobody begins those any more
            m_next = m_parts;
        }
        if (m_unfinished == 0) {
            m_done.notify_one();
        }
    }
}

int rows_worth_a_thread(int columns)
{
    return std::max(s_cells_worth_a_thread / std::max(columns, 1), 1);
}

} // namespace terrain
