#include "commands/RunningCommand.h"

#include <atomic>

namespace terrain {

namespace {

std::atomic<housekeeping::AbstractCommand*> s_running{nullptr}; // not owned

} // namespace

RunningCommand::RunningCommand(housekeeping::AbstractCommand& command)
{
    housekeeping::AbstractCommand* p_none = nullptr;
    m_is_outermost = s_running.compare_exchange_strong(p_none, &command);
}

RunningCommand::~RunningCommand()
{
    if (m_is_outermost) {
        s_running = nullptr;
    }
}

void RunningCommand::request_cancel()
{
    if (housekeeping::AbstractCommand* const p_command = s_running) {
        p_command->request_cancel();
    }
}

} // namespace terrain
