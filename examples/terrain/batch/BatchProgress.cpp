#include "batch/BatchProgress.h"

#include "batch/System.h"
#include "commands/RunningCommand.h"

namespace terrain {

BatchProgress::BatchProgress(std::ostream* p_terminal)
    : m_p_terminal(p_terminal)
{ }

void BatchProgress::open_run(unsigned int start)
{
    show(start);
}

void BatchProgress::set_percentage(unsigned int percentage)
{
    if (interrupted()) {
        RunningCommand::request_cancel();
    }
    if (percentage != m_shown) {
        show(percentage);
    }
}

void BatchProgress::set_text(const QString&) { }

void BatchProgress::close_run()
{
    if (m_p_terminal) {
        *m_p_terminal << "\r      \r" << std::flush;
    }
}

void BatchProgress::show(unsigned int percentage)
{
    m_shown = percentage;
    if (m_p_terminal) {
        *m_p_terminal << '\r' << percentage << " %" << std::flush;
    }
}

} // namespace terrain
