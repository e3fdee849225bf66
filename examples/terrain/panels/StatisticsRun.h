#pragma once

#include "panels/HeightStatistics.h"

#include <QtCore/QObject>

#include <atomic>
#include <thread>

namespace terrain {

/**
 * Counts heights in a thread of its own. It reads the cells in place, so whoever is about to change or delete
 * them calls stop() first; after that nobody reads them any more, and no result comes. Main thread.
 */
class StatisticsRun : public QObject
{
    Q_OBJECT

public:
    explicit StatisticsRun(QObject* p_parent = nullptr);
    /// As stop().
    ~StatisticsRun() override;

    /// Begins anew. @param cells must stay as they are until finished() or stop()
    void start(const std::vector<double>& cells);
    /// Stops, which takes a moment.
    void stop();

    bool is_running() const { return m_is_running; }
    /// How many were begun so far.
    int started() const { return m_number; }

signals:
    /// @param result of no cells if there was not enough memory
    void finished(const terrain::HeightStatistics& result);

private:
    void run(const std::vector<double>& cells, int number); // in the other thread
    void end(int number, const HeightStatistics& result);

    std::thread m_thread;
    bool m_is_running = false;
    std::atomic<bool> m_cancelled{false};
    int m_number = 0; // of the run; results of an earlier one are dropped
};

} // namespace terrain
