#include "ReportSink.h"

#include <tarqa/housekeeping/AbstractCommand.h>

namespace tarqa::housekeeping::testkit {

void ReportSink::begin(AbstractCommand* p_command, const Disturbance& disturbance)
{
    m_p_command = p_command;
    m_disturbance = disturbance;
    m_reports.clear();
}

void ReportSink::end()
{
    m_p_command = nullptr;
    m_disturbance = Disturbance();
}

void ReportSink::open_run(unsigned int)
{
    request_before(1);
}

void ReportSink::set_percentage(unsigned int percentage)
{
    m_reports.push_back(percentage);
    request_before(m_reports.size() + 1);
    const bool again = m_disturbance.goes_on && m_reports.size() > m_disturbance.place && percentage < 100;
    if (m_reports.size() == m_disturbance.place || again) {
        m_disturbance.fail();
    }
}

void ReportSink::set_text(const QString&) { }

void ReportSink::close_run()
{
    if (m_at_close) {
        m_at_close();
    }
}

void ReportSink::request_before(std::size_t place)
{
    if (m_disturbance.kind == Disturbance::Cancel && m_disturbance.place == place && m_p_command) {
        m_p_command->request_cancel();
    }
}

} // namespace tarqa::housekeeping::testkit
