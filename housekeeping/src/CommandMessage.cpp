#include <tarqa/housekeeping/CommandMessage.h>

#include "Assertion.h"

namespace tarqa::housekeeping {

template class MessageFamily<CommandMessage>;

namespace {

const char* const s_source = "housekeeping/src/CommandMessage";

} // namespace

CommandMessage::CommandMessage() = default;
CommandMessage::~CommandMessage() = default;

CommandMessage::CommandMessage(const CommandMessage&) = default;

void CommandMessage::class_instance_dispatch(CommandMessage* p_message)
{
    if (HK_ASSERT(p_message, "p_message")) {
        emit message_dispatched(*p_message);
    }
}

void CommandMessage::command(AbstractCommand* p_cmd)
{
    HK_ASSERT(p_cmd, "p_cmd");
    m_p_command = p_cmd;
}

const AbstractCommand* CommandMessage::command() const
{
    HK_ASSERT(m_p_command, "m_p_command");
    return m_p_command;
}

} // namespace tarqa::housekeeping
