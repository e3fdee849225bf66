// What a message to direct subscribers costs: one Qt signal and one small object.

#include "RatioReporter.h"

#include <tarqa/housekeeping/ApplicationMessage.h>

#include <QtCore/QObject>

#include <memory>
#include <vector>

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

/// The peer: a signal with one reference argument, connected as the framework connects its own.
class Sender : public QObject
{
    Q_OBJECT

signals:
    void sent(QObject& object);
};

class Receiver : public QObject
{
    Q_OBJECT

public slots:
    void receive(QObject& object) { s_received += object.isWidgetType() ? 2 : 1; }
};

void message(benchmark::State& state)
{
    std::vector<std::unique_ptr<Subscriber>> subscribers;
    for (long count = 0; count < state.range(0); ++count) {
        subscribers.push_back(std::make_unique<Subscriber>());
        housekeeping::ApplicationMessage::subscribe(subscribers.back().get(), Qt::AutoConnection);
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

void signal_and_object(benchmark::State& state)
{
    Sender sender;
    std::vector<std::unique_ptr<Receiver>> receivers;
    for (long count = 0; count < state.range(0); ++count) {
        receivers.push_back(std::make_unique<Receiver>());
        QObject::connect(&sender, SIGNAL(sent(QObject&)), receivers.back().get(), SLOT(receive(QObject&)));
    }
    const unsigned long long before = s_received;
    for (auto _ : state) {
        const auto object = std::make_unique<QObject>();
        emit sender.sent(*object);
    }
    if (s_received - before != state.iterations() * receivers.size()) {
        state.SkipWithError("not every signal arrived");
    }
}
BENCHMARK(signal_and_object)->Arg(1)->Arg(10);

const Ratio s_one(
    "message to 1 subscriber / Qt signal and a small QObject", "message/1", "signal_and_object/1");
const Ratio s_ten(
    "message to 10 subscribers / Qt signal and a small QObject", "message/10", "signal_and_object/10");

} // namespace

#include "MessageBenchmark.moc"
