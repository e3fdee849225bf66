#pragma once

#include "MessageMemory.h"

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSharedPointer>

namespace tarqa::housekeeping {

/**
 * A message that is sent at once, for the time of its sending. It is the thread's ready one of its kind, and
 * stays that afterwards, since making and deleting a QObject takes longer than sending it: so the sender sets
 * all of its fields. A message sent within the sending of another one of its kind is an object of its own.
 *
 * Nobody is to see it stay: when a subscriber took hold of the object itself, by a QPointer, a connection to
 * its signals, a property, a name, a child, a parent or an event, it goes as a message always does, and the
 * next one is new. Qt does not tell of two things, which docs/messages.md rules out therefore: connections
 * that name it as the receiver, and event filters. Its class is derived from the message's, too.
 */
template <class Message, message_memory::Kind kind>
class ReadyMessage
{
public:
    ReadyMessage() = default;
    ~ReadyMessage()
    {
        if (m_p_message->is_held() || !message_memory::keep_ready(kind, m_p_message)) {
            delete m_p_message;
        }
    }
    ReadyMessage(const ReadyMessage&) = delete;
    ReadyMessage& operator=(const ReadyMessage&) = delete;

    Message* operator->() const { return m_p_message; }

private:
    class Object final : public Message
    {
    public:
        Object() = default;
        ~Object() override
        {
            if (!m_p_references->weakref.deref()) {
                delete m_p_references;
            }
        }

        /// Whether a subscriber knows the object, or left something with it.
        bool is_held() const
        {
            const QObjectData& data = *this->d_ptr;
            return m_was_touched || m_p_references->weakref.loadRelaxed() != s_own_references || data.parent
                || data.blockSig || data.postedEvents != 0 || !data.children.isEmpty()
                || !this->objectName().isEmpty() || has_unannounced_properties();
        }

    private:
        typedef QtSharedPointer::ExternalRefCountData References;

        static constexpr int s_own_references = 2; // QObject's and this class's

        void connectNotify(const QMetaMethod&) override { m_was_touched = true; }
        bool event(QEvent* p_event) override // of a new property, too
        {
            m_was_touched = true;
            return Message::event(p_event);
        }

        /// Without an application there are no events.
        bool has_unannounced_properties() const
        {
            return !QCoreApplication::instance() && !this->dynamicPropertyNames().isEmpty();
        }

        References* const m_p_references = References::getAndRef(this);
        bool m_was_touched = false;
    };

    static Object* ready_or_new()
    {
        QObject* const p_ready = message_memory::take_ready(kind);
        return p_ready ? static_cast<Object*>(p_ready) : new Object;
    }

    Object* const m_p_message = ready_or_new();
};

} // namespace tarqa::housekeeping
