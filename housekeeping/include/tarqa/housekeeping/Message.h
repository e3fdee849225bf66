#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QObject>

#include <cstddef>
#include <new>

namespace tarqa::housekeeping {

/**
 * The base of all messages: small objects that announce a change to whoever subscribed to their class.
 *
 * A message is made on the heap without a parent and sent either at once, in the sender's call stack
 * (`Message::dispatch(msg)`, which deletes it afterwards), or later from the event loop (`msg->post()`, which
 * hands it to the MessageHandler). A message on the stack is sent with its own `dispatch()`. Subscribers get
 * a reference that is valid during the call only; copy the message to keep it. See MessageFamily for
 * subscribing.
 */
class TQ_HK_EXPORT Message : public QObject
{
    Q_OBJECT

public:
    /// Sends @p msg now and deletes it, also when a subscriber throws. A null @p msg is logged ("msg").
    static void dispatch(Message* msg);

    /// Sends this message now, to all subscribers of its class; does not delete it.
    virtual void dispatch() = 0;
    /// Hands this message over to the MessageHandler, to be delivered by the event loop. The sender must not
    /// touch it any more. Any thread.
    virtual void post() = 0;

    /// Memory for a message, which each thread keeps ready for its next ones. A message may be deleted in
    /// another thread than the one that made it. @throw std::bad_alloc, but not the form with std::nothrow
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    static void* operator new(std::size_t size, std::align_val_t alignment);
    static void* operator new(std::size_t, void* p_memory) noexcept { return p_memory; }
    static void operator delete(void* p_memory, std::size_t size) noexcept;
    static void operator delete(void* p_memory, std::size_t size, std::align_val_t alignment) noexcept;
    static void operator delete(void* p_memory, const std::nothrow_t&) noexcept;
    static void operator delete(void*, void*) noexcept { }

protected:
    Message();
    /// A copy has neither a parent nor connections.
    Message(const Message&);
    ~Message() override;

private:
    friend class MessageHandler; // deletes what comes too late
};

} // namespace tarqa::housekeeping
