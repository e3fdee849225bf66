#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/**
 * Which command is running, for whoever wants to cancel it: a signal, a button.
 *
 * Commands declare one of these at the top of their do_command(). There is one run at a time in the process
 * (the command manager sees to that); of commands inside commands the outermost counts.
 */
class RunningCommand
{
public:
    explicit RunningCommand(housekeeping::AbstractCommand& command);
    ~RunningCommand();
    RunningCommand(const RunningCommand&) = delete;
    RunningCommand& operator=(const RunningCommand&) = delete;

    /// Asks the running command, if there is one, to stop at its next progress report. In the thread that
    /// runs it, or in any other that makes sure that the document's history lives meanwhile.
    static void request_cancel();

private:
    bool m_is_outermost;
};

} // namespace terrain
