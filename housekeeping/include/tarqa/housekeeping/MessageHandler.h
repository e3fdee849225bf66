#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QObject>

class QTimer;

namespace tarqa::housekeeping {

class Message;

/**
 * Delivers posted messages, strictly first in, first out, from the event loop of the thread that first asked
 * for the handler (the main thread): a timer of interval zero drains the whole queue in one shot.
 *
 * post() may be called from any thread. The queue's mutex is not recursive and is held while subscribers run,
 * which is the rule that keeps deliveries in order: a slot that is reached from a posted message must not
 * post (it would block for ever), open a modal dialog (in whose event loop the main thread might post), run
 * commands or take a controller's lock (another thread may hold either while it posts); it may send at once.
 *
 * A singleton, destroyed in phase 6 of the ordered destruction; what is still queued then, or posted later,
 * is not delivered.
 * What is posted before the application object exists stays queued until restart() or the next post.
 */
class TQ_HK_EXPORT MessageHandler : public QObject
{
    Q_OBJECT

public:
    /// The one object; made at first use, which belongs to the main thread. After its destruction one that
    /// drops what is posted.
    static MessageHandler& instance();
    /// The same, to look at only.
    static const MessageHandler& const_instance();

    /// Takes @p msg over and deletes it after its delivery. Does not check it; a null message is logged when
    /// its turn comes.
    void post(Message* msg);

    /// Starts the timer again if messages are waiting; for start-up, once the application object exists.
    void restart();

private slots:
    void idleTimeout();

private:
    friend class pkBase::pkSingleton<MessageHandler>;
    friend class TestAccess;
    MessageHandler();
    ~MessageHandler() override;
    static pkBase::pkSingleton<MessageHandler>& get_instance();
    static void destroy_instance();
    static void destroy_at_shutdown();

    void start_timer_locked();

    QList<Message*> m_queue; // owned; guarded by m_mutex
    QMutex m_mutex;
    QTimer* m_timer; // owned by this object
    bool m_timer_started = false; // guarded by m_mutex
};

} // namespace tarqa::housekeeping
