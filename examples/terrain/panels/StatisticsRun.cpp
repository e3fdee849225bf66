#include "panels/StatisticsRun.h"

#include <QtCore/QMetaObject>

#include <new>
#include <system_error>

namespace terrain {

StatisticsRun::StatisticsRun(QObject* p_parent)
    : QObject(p_parent)
{ }

StatisticsRun::~StatisticsRun()
{
    stop();
}

void StatisticsRun::start(const std::vector<double>& cells)
{
    stop();
    const int number = ++m_number;
    m_is_running = true;
    try {
        m_thread = std::thread([this, &cells, number] { run(cells, number); });
    } catch (const std::system_error&) {
        run(cells, number); // without threads it takes as long as it takes
    }
}

void StatisticsRun::stop()
{
    m_is_running = false;
    if (m_thread.joinable()) {
        m_cancelled = true;
        m_thread.join();
        m_cancelled = false;
    }
}

void StatisticsRun::run(const std::vector<double>& cells, int number)
{
    std::optional<HeightStatistics> result;
    try {
        result = height_statistics(cells, m_cancelled);
    } catch (const std::bad_alloc&) {
        result = HeightStatistics();
    }
    if (result) {
        QMetaObject::invokeMethod(
            this, [this, number, found = *result] { end(number, found); }, Qt::QueuedConnection);
    }
}

void StatisticsRun::end(int number, const HeightStatistics& result)
{
    if (number != m_number || !m_is_running) {
        return; // it was stopped when its result was on the way
    }
    m_is_running = false;
    if (m_thread.joinable()) {
        m_thread.join();
    }
    emit finished(result);
}

} // namespace terrain
