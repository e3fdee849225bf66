#include <tarqa/housekeeping/Message.h>

#include "Assertion.h"

#include <memory>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/Message";
constexpr unsigned int s_line_of_dispatch = 59;

} // namespace

Message::Message() = default;

Message::Message(const Message&)
    : QObject()
{ }

Message::~Message() = default;

void Message::dispatch(Message* msg)
{
    struct Deleter
    {
        void operator()(Message* p_message) const { delete p_message; }
    };
    if (!HK_ASSERT_AT(msg, "msg", s_line_of_dispatch)) {
        return;
    }
    const std::unique_ptr<Message, Deleter> owner(msg); // a subscriber may throw
    msg->dispatch();
}

} // namespace tarqa::housekeeping
