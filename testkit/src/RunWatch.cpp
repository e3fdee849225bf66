#include "RunWatch.h"

namespace tarqa::housekeeping::testkit {

RunWatch::RunWatch()
{
    CommandMessage::subscribe(this, Qt::DirectConnection);
}

RunWatch::~RunWatch() = default;

void RunWatch::handle_message(housekeeping::CommandMessage& message)
{
    m_heard = true;
    m_type = message.command_type();
}

} // namespace tarqa::housekeeping::testkit
