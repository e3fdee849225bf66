// What a message costs that is sent at once: the way to its subscribers, and the object on the heap.

#include "RatioReporter.h"

#include <tarqa/housekeeping/ApplicationMessage.h>

#include <QtCore/QObject>

#include <boost/signals2/signal.hpp>

#include <list>

namespace housekeeping = tarqa::housekeeping;

namespace {

unsigned long long s_received = 0; // keeps the slots from being empty

/// What a subscriber of a message class looks like.
class Subscriber : public QObject
{
    Q_OBJECT

public slots:
    void handle_message(housekeeping::ApplicationMessage& message) { s_received += message.opType(); }
};

/// What the peer's signal carries: the fields of the message.
struct Payload
{
    housekeeping::ApplicationMessage::OpType op_type = housekeeping::ApplicationMessage::DefaultOperation;
};

/// A receiver of the peer's signal; as those of the message it is disconnected when it goes.
class Receiver
{
public:
    explicit Receiver(boost::signals2::signal<void(Payload&)>& signal)
        : m_connection(signal.connect([this](Payload& payload) { receive(payload); }))
    { }

private:
    void receive(Payload& payload) { s_received += payload.op_type; }

    boost::signals2::scoped_connection m_connection;
};

void message(benchmark::State& state)
{
    std::list<Subscriber> subscribers(static_cast<std::size_t>(state.range(0)));
    for (Subscriber& subscriber : subscribers) {
        housekeeping::ApplicationMessage::subscribe(&subscriber, Qt::AutoConnection);
    }
    const unsigned long long before = s_received;
    for (auto _ : state) {
        housekeeping::ApplicationMessage* p_message = housekeeping::ApplicationMessage::instance();
        p_message->opType(housekeeping::ApplicationMessage::DefaultOperation);
        housekeeping::Message::dispatch(p_message);
    }
    if (s_received - before != state.iterations() * subscribers.size()) {
        state.SkipWithError("not every message arrived");
    }
}
BENCHMARK(message)->Arg(1)->Arg(10);

void signals2(benchmark::State& state)
{
    boost::signals2::signal<void(Payload&)> signal;
    std::list<Receiver> receivers;
    for (long count = 0; count < state.range(0); ++count) {
        receivers.emplace_back(signal);
    }
    const unsigned long long before = s_received;
    for (auto _ : state) {
        auto* p_payload = new Payload;
        p_payload->op_type = housekeeping::ApplicationMessage::DefaultOperation;
        benchmark::DoNotOptimize(p_payload); // or the compiler might do without the heap
        signal(*p_payload);
        delete p_payload;
    }
    if (s_received - before != state.iterations() * receivers.size()) {
        state.SkipWithError("not every signal arrived");
    }
}
BENCHMARK(signals2)->Arg(1)->Arg(10);

const Ratio s_one(
    "message to 1 subscriber / boost::signals2 with a heap payload", "message/1", "signals2/1", 1.05);
const Ratio s_ten(
    "message to 10 subscribers / boost::signals2 with a heap payload", "message/10", "signals2/10", 0.65);

} // namespace

#include "MessageBenchmark.moc"
