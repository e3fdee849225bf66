#pragma once

#include <tarqa/housekeeping/Message.h>
#include <tarqa/housekeeping/MessageHandler.h>

#include <QtCore/QByteArray>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaType>

namespace tarqa::housekeeping {

/**
 * What all message classes share: the hidden class instance whose signal carries the messages, subscription,
 * sending and posting. A message class @p X reads
 *
 *     class X : public MessageFamily<X>
 *     {
 *         Q_OBJECT
 *     public:
 *         static const char* type_name() { return "housekeeping::X"; }
 *         X(); X(const X&); ~X();
 *     signals:
 *         void message_dispatched(housekeeping::X&);
 *     private:
 *         friend class MessageFamily<X>;
 *         void class_instance_dispatch(X* p_message);
 *     };
 *
 * Qt compares the texts of signals and slots, so the parameter is written exactly as type_name() says, in
 * receivers too: `void handle_message(housekeeping::X& message);`. A host outside the namespace `tarqa`
 * therefore writes `namespace housekeeping = tarqa::housekeeping;` first.
 *
 * A receiver that lives in the sending thread is called at once; one that lives in another thread gets its
 * own copy of the message there, from its event loop (with Qt::AutoConnection). The class instance is made by
 * the first use, which happens on the main thread at start-up, and is never deleted.
 */
template <class X>
class MessageFamily : public Message
{
public:
    /// Whether a subscriber in another thread gets a copy; a class that must stay in its thread says false.
    static constexpr bool crosses_threads = true;

    /// A new message in its default state, for the caller to fill and send.
    static X* instance() { return new X; }

    /**
     * Connects a slot of @p receiver to the messages of this class; each call makes a connection of its own.
     * @param receiver must not be null; the connection goes when it is deleted
     * @param slot a SLOT() text
     * @param type normally Qt::AutoConnection
     * @return false if the receiver has no such slot (Qt prints a warning)
     */
    static bool subscribe(const QObject* receiver, const char* slot, Qt::ConnectionType type)
    {
        return static_cast<bool>(QObject::connect(class_instance(), signal(), receiver, slot, type));
    }
    /// As above with the slot `handle_message(housekeeping::X&)`.
    static bool subscribe(const QObject* receiver, Qt::ConnectionType type)
    {
        static const QByteArray s_slot = QByteArray("1handle_message(") + X::type_name() + "&)";
        return subscribe(receiver, s_slot.constData(), type);
    }
    /// Disconnects all slots of @p receiver from the messages of this class.
    /// @return false if there was nothing to disconnect, or if @p receiver is null
    static bool unsubscribe(const QObject* receiver)
    {
        // Qt takes a null receiver for "everybody".
        return receiver && QObject::disconnect(class_instance(), signal(), receiver, nullptr);
    }

    using Message::dispatch;
    /// As Message says.
    void dispatch() override { class_instance()->class_instance_dispatch(static_cast<X*>(this)); }
    /// As Message says.
    void post() override { MessageHandler::instance().post(this); }

protected:
    MessageFamily() = default;
    MessageFamily(const MessageFamily&) = default;
    ~MessageFamily() override = default;

private:
    static X* class_instance()
    {
        static X* const s_p_instance = make_class_instance();
        return s_p_instance;
    }

    static X* make_class_instance()
    {
        // Must come before the first connection: Qt remembers a failed look-up of the type for each
        // connection.
        if constexpr (X::crosses_threads) {
            qRegisterMetaType<X>(QByteArray(X::type_name()) + "&");
        }
        return new X;
    }

    static const char* signal()
    {
        static const QByteArray s_signal = QByteArray("2message_dispatched(") + X::type_name() + "&)";
        return s_signal.constData();
    }
};

} // namespace tarqa::housekeeping
