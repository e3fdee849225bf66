#pragma once

#include "Disturbance.h"

#include <pkBase/AbstractProgress.h>

#include <functional>
#include <utility>
#include <vector>

namespace tarqa::housekeeping {
class AbstractCommand;
}

namespace tarqa::housekeeping::testkit {

/// A progress sink that writes down what a run reports, and disturbs it at one place.
class ReportSink : public pkBase::AbstractProgress
{
public:
    /// The next run is one of @p command, disturbed so. Not owned.
    void begin(AbstractCommand* p_command, const Disturbance& disturbance);
    /// The run is over: nothing is disturbed any more.
    void end();

    /// What is called when a run ends, before its busy mark goes.
    void at_close(std::function<void()> action) { m_at_close = std::move(action); }

    const std::vector<unsigned int>& reports() const { return m_reports; }

    void open_run(unsigned int start) override;
    void set_percentage(unsigned int percentage) override;
    void set_text(const QString& text) override;
    void close_run() override;

private:
    void request_before(std::size_t place);

    AbstractCommand* m_p_command = nullptr; // not owned
    Disturbance m_disturbance;
    std::function<void()> m_at_close;
    std::vector<unsigned int> m_reports;
};

} // namespace tarqa::housekeeping::testkit
