#include "preferences/PreferencesChanged.h"

#include <tarqa/housekeeping/ApplicationMessage.h>

namespace terrain {

using housekeeping::ApplicationMessage;

namespace {

/// The program's own kinds begin above the framework's.
const auto s_preferences_changed
    = static_cast<ApplicationMessage::OpType>(ApplicationMessage::DefaultOperation + 1);

} // namespace

void send_preferences_changed()
{
    ApplicationMessage* const p_message = ApplicationMessage::instance();
    p_message->opType(s_preferences_changed);
    housekeeping::Message::dispatch(p_message); // deletes it
}

bool is_preferences_changed(const ApplicationMessage& message)
{
    return message.opType() == s_preferences_changed;
}

} // namespace terrain
