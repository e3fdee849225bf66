#include <tarqa/housekeeping/ApplicationMessage.h>

#include "Assertion.h"

namespace tarqa::housekeeping {

template class MessageFamily<ApplicationMessage>;

namespace {

const char* const s_source = "housekeeping/src/ApplicationMessage";

} // namespace

ApplicationMessage::ApplicationMessage() = default;
ApplicationMessage::~ApplicationMessage() = default;

ApplicationMessage::ApplicationMessage(const ApplicationMessage&) = default;

void ApplicationMessage::class_instance_dispatch(ApplicationMessage* p_message)
{
    if (HK_ASSERT(p_message, "p_message")) {
        emit message_dispatched(*p_message);
    }
}

} // namespace tarqa::housekeeping
