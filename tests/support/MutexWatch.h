#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <thread>

namespace support {

/// Tells whether threads wait for a mutex that is locked when the watch begins, and stays locked: what stands
/// in its memory changes when the first one begins to wait.
template <class Mutex>
class MutexWatch
{
public:
    explicit MutexWatch(const Mutex& locked)
        : m_mutex(locked)
        , m_before(content())
    { }

    bool somebody_waits() const { return content() != m_before; }

private:
    typedef std::array<unsigned char, sizeof(Mutex)> Content;

    Content content() const
    {
        const volatile unsigned char* const p_bytes
            = reinterpret_cast<const volatile unsigned char*>(&m_mutex);
        Content bytes;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            bytes[i] = p_bytes[i];
        }
        return bytes;
    }

    const Mutex& m_mutex;
    const Content m_before;
};

/**
 * Runs @p operation in another thread and holds @p mutex from the moment in which the operation calls the
 * function that it is given, until the operation waits for the mutex or has ended.
 * @param meanwhile called while the operation waits
 * @return whether it waited
 */
template <class Mutex>
bool waits_for(
    Mutex& mutex, const std::function<void(const std::function<void()>&)>& operation,
    const std::function<void()>& meanwhile = [] {})
{
    std::atomic<bool> reached{false};
    std::atomic<bool> held{false};
    std::atomic<bool> ended{false};
    std::thread worker([&] {
        operation([&reached, &held] {
            reached = true;
            while (!held) {
                std::this_thread::yield();
            }
        });
        ended = true;
    });
    while (!reached && !ended) {
        std::this_thread::yield();
    }
    mutex.lock();
    const MutexWatch<Mutex> watch(mutex);
    held = true;
    while (!ended && !watch.somebody_waits()) {
        std::this_thread::yield();
    }
    const bool waited = !ended;
    if (waited) {
        meanwhile();
    }
    mutex.unlock();
    worker.join();
    return waited;
}

/// The same from the beginning of @p operation on.
template <class Mutex>
bool waits_for_at_once(
    Mutex& mutex, const std::function<void()>& operation, const std::function<void()>& meanwhile = [] {})
{
    return waits_for(
        mutex,
        [&operation](const std::function<void()>& now) {
            now();
            operation();
        },
        meanwhile);
}

} // namespace support
