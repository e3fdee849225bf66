#include "batch/RunReporter.h"

#include "commands/RasterCommand.h"

#include <tarqa/housekeeping/AbstractCommand.h>

namespace terrain {

RunReporter::RunReporter(std::ostream& out)
    : m_out(out)
{
    housekeeping::CommandMessage::subscribe(this, Qt::DirectConnection);
}

void RunReporter::reset()
{
    m_failed = false;
    m_failure.clear();
}

void RunReporter::handle_message(housekeeping::CommandMessage& message)
{
    const housekeeping::AbstractCommand& command = *message.command();
    const bool undone = message.command_type() == housekeeping::CommandMessage::Undone;
    const bool succeeded = message.command_type() != housekeeping::CommandMessage::Failed;
    m_out << command.protocol(undone ? "UNDO>" : "DO>", succeeded) << std::flush;
    m_failure = undone ? std::string() : failure_of(command);
    m_failed = !succeeded || !m_failure.empty();
}

} // namespace terrain
