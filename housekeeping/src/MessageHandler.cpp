#include <tarqa/housekeeping/MessageHandler.h>

#include "GuardedLocker.h"

#include <tarqa/housekeeping/Message.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <atomic>

namespace tarqa::housekeeping {

namespace {

const GuardedMutex s_delivery{"the message handler's mutex",
    "a slot that is reached from a posted message posts nothing, runs no command, takes no controller's lock "
    "and opens no modal dialog; it may send at once."};

/// Set when the handler has been destroyed for good: what is posted later is lost.
std::atomic<bool> s_closed{false};

/// Messages from the front of the queue, which leave it all at once in the end.
class Taken
{
public:
    explicit Taken(QList<Message*>& queue)
        : m_queue(queue)
    { }
    ~Taken() { m_queue.erase(m_queue.begin(), m_queue.begin() + m_count); }
    Taken(const Taken&) = delete;
    Taken& operator=(const Taken&) = delete;

    /// Null when there is no more.
    Message* const* next() { return m_count < m_queue.size() ? &m_queue.at(m_count++) : nullptr; }

private:
    QList<Message*>& m_queue;
    int m_count = 0;
};

} // namespace

MessageHandler::MessageHandler()
    : m_timer(new QTimer(this))
{
    connect(m_timer, SIGNAL(timeout()), this, SLOT(idleTimeout()));
}

/// Drops what is still queued: nobody is left who could take it.
MessageHandler::~MessageHandler() = default;

pkBase::pkSingleton<MessageHandler>& MessageHandler::get_instance()
{
    static pkBase::pkSingleton<MessageHandler> s_holder(
        pkBase::pkDestructionPhase(6), &MessageHandler::destroy_at_shutdown);
    return s_holder;
}

MessageHandler& MessageHandler::instance()
{
    return get_instance().get();
}

const MessageHandler& MessageHandler::const_instance()
{
    return instance();
}

void MessageHandler::destroy_instance()
{
    get_instance().destroy();
}

void MessageHandler::destroy_at_shutdown()
{
    s_closed = true;
    destroy_instance();
}

void MessageHandler::post(Message* msg)
{
    if (s_closed) {
        delete msg;
        return;
    }
    const GuardedLocker lock(&m_mutex, s_delivery);
    m_queue.append(msg);
    // A timer that runs already will drain this message too.
    if (m_queue.size() == 1 || !m_timer_started) {
        start_timer_locked();
    }
}

void MessageHandler::restart()
{
    const GuardedLocker lock(&m_mutex, s_delivery);
    if (!m_queue.isEmpty()) {
        start_timer_locked();
    }
}

void MessageHandler::start_timer_locked()
{
    // Without an application object there is no event loop to start a timer in; restart() makes up for it.
    m_timer_started = QCoreApplication::instance() != nullptr;
    if (!m_timer_started) {
        return;
    }
    if (QThread::currentThread() == thread()) {
        m_timer->start();
    } else {
        QMetaObject::invokeMethod(m_timer, "start", Qt::QueuedConnection);
    }
}

void MessageHandler::idleTimeout()
{
    const GuardedLocker lock(&m_mutex, s_delivery); // held while subscribers run: see the class comment
    Taken taken(m_queue);
    while (Message* const* const p_p_message = taken.next()) {
        Message::dispatch(*p_p_message);
    }
    m_timer->stop();
    m_timer_started = false;
}

} // namespace tarqa::housekeeping
