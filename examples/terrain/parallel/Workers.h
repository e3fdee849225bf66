#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace terrain {

/**
 * Spreads parts of a computation over the machine's cores: the thread that owns the object, and threads that
 * it keeps for as long as it lives. These are started when there is first something for them to do; where
 * none can be started, the owner does everything.
 *
 * What is computed must not depend on who computes which part, nor in what order. A plain local object of
 * whoever has something to compute; only the owner calls it.
 */
class Workers
{
public:
    /// As many threads as the machine has cores, the owner among them.
    Workers();
    /// @param threads the owner among them
    explicit Workers(int threads);
    /// Waits for the threads, which have nothing to do by then.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// As many as were asked for, the owner among them.
    int threads() const { return m_threads; }

    /// Calls @p work once for each part, from 0 to @p parts - 1, in all of the threads, and returns when all
    /// are done. What @p work throws first is thrown here, when the parts that had begun are done; the others
    /// then are left out.
    void run(std::size_t parts, const std::function<void(std::size_t part)>& work);

    /// The same for ranges of rows that are next to each other. @p work gets the first one of a range and the
    /// one behind the last. @param rows_of_part as many rows at a time; at least 1
    void run_rows(int rows, int rows_of_part, const std::function<void(int first, int end)>& work);

private:
    void start_threads();
    void serve();
    void work_on(std::unique_lock<std::mutex>& lock);

    const int m_threads;
    bool m_started = false; // the owner's
    std::vector<std::thread> m_helpers;

    std::mutex m_mutex;
    std::condition_variable m_begun;
    std::condition_variable m_done;
    // guarded by m_mutex
    const std::function<void(std::size_t)>* m_p_work = nullptr;
    std::size_t m_next = 0;
    std::size_t m_parts = 0;
    std::size_t m_unfinished = 0;
    std::exception_ptr m_failure;
    bool m_ends = false;
};

/// How many rows with so many columns make a part that is worth a thread's while.
int rows_worth_a_thread(int columns);

} // namespace terrain
