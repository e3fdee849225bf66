#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QThreadStorage>

#include <atomic>
#include <thread>

namespace tarqa::housekeeping {

/**
 * Small numbers for threads: 1, 2, 3 … in the order in which threads first ask for theirs; 0 names no thread.
 * It also tells the main thread from the others.
 *
 * The first call of instance() must come from the main thread; the ApplicationManager makes it when it is
 * made itself. All else may be called from any thread. A singleton, destroyed in phase 5 of the ordered
 * destruction.
 */
class TQ_HK_EXPORT ThreadLocal
{
public:
    /// The one object. The first call makes it, and must come from the main thread.
    static ThreadLocal& instance();

    /// The calling thread's number; given out when the thread first asks and kept until the thread ends.
    unsigned int thread_local_id();

    /// The main thread's number. Asserts that there is one.
    unsigned int main_thread_id();

    /// Whether the calling thread is the main thread. Asserts that there is one.
    bool is_main_thread();

private:
    friend class pkBase::pkSingleton<ThreadLocal>;
    friend class TestAccess;
    ThreadLocal();
    virtual ~ThreadLocal();
    ThreadLocal(const ThreadLocal&) = delete;
    ThreadLocal& operator=(const ThreadLocal&) = delete;
    static pkBase::pkSingleton<ThreadLocal>& get_instance();
    static void destroy_instance();

    static std::atomic<unsigned int> s_next_id;

    QThreadStorage<unsigned int> m_thread_local_ids; // none until the thread asks
    unsigned int m_main_thread_id = 0;
    // The end of the application object wipes the main thread's storage, so its number is kept here as well.
    std::thread::id m_main_thread;
};

} // namespace tarqa::housekeeping
