#pragma once

#include <QtCore/QRunnable>
#include <QtCore/QSemaphore>
#include <QtCore/QThreadPool>

/// Keeps some threads of a pool busy as long as it lives.
class BusyPool
{
public:
    explicit BusyPool(int threads, QThreadPool& pool = *QThreadPool::globalInstance())
        : m_pool(pool)
        , m_threads(threads)
    {
        for (int i = 0; i < threads; ++i) {
            m_pool.start(new Work(*this));
        }
        m_started.acquire(threads);
    }
    ~BusyPool()
    {
        m_end.release(m_threads);
        m_ended.acquire(m_threads);
        m_pool.waitForDone();
    }
    BusyPool(const BusyPool&) = delete;
    BusyPool& operator=(const BusyPool&) = delete;

private:
    class Work : public QRunnable
    {
    public:
        explicit Work(BusyPool& owner)
            : m_owner(owner)
        { }
        void run() override
        {
            m_owner.m_started.release();
            m_owner.m_end.acquire();
            m_owner.m_ended.release();
        }

    private:
        BusyPool& m_owner; // outlives it
    };

    QThreadPool& m_pool;
    int m_threads;
    QSemaphore m_started;
    QSemaphore m_end;
    QSemaphore m_ended;
};
