#pragma once

#include "support/MutexWatch.h"
#include "support/TestAccess.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

/// A thread that destroys a document while another one is being created.
class Destroyer
{
public:
    /// Called during the creation, in its thread.
    void start(const std::function<void()>& destroy)
    {
        QMutex& mutex = tarqa::housekeeping::TestAccess::registry_mutex(manager());
        ASSERT_FALSE(mutex.tryLock()); // the creation holds it
        const support::MutexWatch<QMutex> watch(mutex);
        m_thread = std::thread([this, destroy] {
            destroy();
            m_ended = true;
        });
        while (!m_ended && !watch.somebody_waits()) {
            std::this_thread::yield();
        }
    }
    /// Whether it waits for the end of the creation.
    bool waits() const { return m_thread.joinable() && !m_ended; }
    void join() { m_thread.join(); }

private:
    static tarqa::housekeeping::DocumentManager& manager()
    {
        return tarqa::housekeeping::DocumentManager::instance();
    }

    std::thread m_thread;
    std::atomic<bool> m_ended{false};
};
