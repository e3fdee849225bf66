#include <tarqa/housekeeping/Message.h>

#include "Assertion.h"
#include "MessageMemory.h"

#include <memory>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/Message";
constexpr unsigned int s_line_of_dispatch = 59;

} // namespace

void* Message::operator new(std::size_t size)
{
    return message_memory::take(size);
}

void* Message::operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    try {
        return message_memory::take(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* Message::operator new(std::size_t size, std::align_val_t alignment)
{
    return ::operator new(size, alignment);
}

void Message::operator delete(void* p_memory, std::size_t size) noexcept
{
    message_memory::give_back(p_memory, size);
}

void Message::operator delete(void* p_memory, const std::nothrow_t&) noexcept
{
    ::operator delete(p_memory); // of a message whose constructor threw
}

void Message::operator delete(void* p_memory, std::size_t, std::align_val_t alignment) noexcept
{
    ::operator delete(p_memory, alignment);
}

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
