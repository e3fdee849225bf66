// What a message costs that is posted, from the posting to the end of its delivery by the event loop.

#include "RatioReporter.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/MessageHandler.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QSemaphore>

#include <thread>

namespace housekeeping = tarqa::housekeeping;

namespace {

const unsigned long long s_burst = 10000;

unsigned long long s_received = 0;

class Subscriber : public QObject
{
    Q_OBJECT

public slots:
    void handle_message(housekeeping::ApplicationMessage& message) { s_received += message.opType(); }
};

/// The peer: an event with the fields of the message.
class PostedEvent : public QEvent
{
public:
    static QEvent::Type event_type()
    {
        static const auto s_type = static_cast<QEvent::Type>(QEvent::registerEventType());
        return s_type;
    }

    PostedEvent()
        : QEvent(event_type())
    { }

    housekeeping::ApplicationMessage::OpType op_type = housekeeping::ApplicationMessage::DefaultOperation;
};

class Receiver : public QObject
{
public:
    bool event(QEvent* p_event) override
    {
        if (p_event->type() != PostedEvent::event_type()) {
            return QObject::event(p_event);
        }
        s_received += static_cast<PostedEvent*>(p_event)->op_type;
        return true;
    }
};

void post_messages()
{
    for (unsigned long long count = 0; count < s_burst; ++count) {
        housekeeping::ApplicationMessage* p_message = housekeeping::ApplicationMessage::instance();
        p_message->opType(housekeeping::ApplicationMessage::DefaultOperation);
        p_message->post();
    }
}

void post_events(QObject& receiver)
{
    for (unsigned long long count = 0; count < s_burst; ++count) {
        auto* p_event = new PostedEvent;
        p_event->op_type = housekeeping::ApplicationMessage::DefaultOperation;
        QCoreApplication::postEvent(&receiver, p_event);
    }
}

/// Runs the event loop until a burst has been delivered.
void receive_burst()
{
    for (const unsigned long long all = s_received + s_burst; s_received != all;) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// Measures bursts that are posted from the thread of the event loop.
template <class Post>
void measure_bursts(benchmark::State& state, Post post)
{
    for (auto _ : state) {
        post();
        receive_burst();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * s_burst));
}

/// Measures bursts that another thread posts while the event loop runs.
template <class Post>
void measure_bursts_of_worker(benchmark::State& state, Post post)
{
    QSemaphore asked; // for bursts
    bool ended = false; // written before the semaphore is released
    std::thread worker([&] {
        for (asked.acquire(); !ended; asked.acquire()) {
            post();
        }
    });
    for (auto _ : state) {
        asked.release();
        receive_burst();
    }
    ended = true;
    asked.release();
    worker.join();
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * s_burst));
}

void post(benchmark::State& state)
{
    Subscriber subscriber;
    housekeeping::ApplicationMessage::subscribe(&subscriber, Qt::AutoConnection);
    measure_bursts(state, post_messages);
}
BENCHMARK(post);

void post_event(benchmark::State& state)
{
    Receiver receiver;
    measure_bursts(state, [&receiver] { post_events(receiver); });
}
BENCHMARK(post_event);

void post_from_worker(benchmark::State& state)
{
    housekeeping::MessageHandler::instance(); // delivers in the thread that asks for it first
    Subscriber subscriber;
    housekeeping::ApplicationMessage::subscribe(&subscriber, Qt::AutoConnection);
    measure_bursts_of_worker(state, post_messages);
}
BENCHMARK(post_from_worker)->UseRealTime();

void post_event_from_worker(benchmark::State& state)
{
    Receiver receiver;
    measure_bursts_of_worker(state, [&receiver] { post_events(receiver); });
}
BENCHMARK(post_event_from_worker)->UseRealTime();

const Ratio s_here(
    "10,000 messages posted and delivered / QCoreApplication::postEvent", "post", "post_event", 0.4);
const Ratio s_worker("10,000 messages posted from a worker and delivered / QCoreApplication::postEvent",
    "post_from_worker", "post_event_from_worker", 0.6);

} // namespace

#include "PostBenchmark.moc"
