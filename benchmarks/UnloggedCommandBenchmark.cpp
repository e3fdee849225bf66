// What the insertion of a command costs apart from the log, and whether insertion, undo and redo cost the
// same with few and with many commands in the history.

#include "EmptyHost.h"
#include "RatioReporter.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtCore/QObject>
#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>

#include <boost/signals2/signal.hpp>

#include <chrono>

namespace housekeeping = tarqa::housekeeping;

namespace {

using empty_host::document_with;
using empty_host::fill;
using empty_host::insert_and_forget;

constexpr int s_steps = 10; // in one measured iteration of undo or redo
constexpr unsigned long long s_busy_and_idle
    = housekeeping::DocumentMessage::Busy + housekeeping::DocumentMessage::Idle;

unsigned long long s_received = 0; // keeps the slots from being empty

/// Stands for the windows of a host, which follow the busy marks. The library itself listens to the other two
/// messages of an insertion.
class Subscriber : public QObject
{
    Q_OBJECT

public:
    Subscriber() { housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection); }

public slots:
    void handle_message(housekeeping::DocumentMessage& message) { s_received += message.doc_change_type(); }
};

void insert_bare(benchmark::State& state)
{
    insert_and_forget(state);
}
BENCHMARK(insert_bare)->Arg(10)->Arg(100000);

void insert_heard(benchmark::State& state)
{
    document_with(static_cast<unsigned long long>(state.range(0))); // so that only what is measured is heard
    const Subscriber subscriber;
    const unsigned long long before = s_received;
    insert_and_forget(state);
    if (s_received - before != static_cast<unsigned long long>(state.iterations()) * s_busy_and_idle) {
        state.SkipWithError("not every message arrived");
    }
}
BENCHMARK(insert_heard)->Arg(10);

// What the peer's signals carry: the fields of the messages.

struct DocumentPayload
{
    int change_type;
    unsigned long long document_id;
};

struct HistoryPayload
{
    int kind;
};

struct CommandPayload
{
    QUndoCommand* p_command; // not owned
    unsigned long long document_id;
    int command_type;
    bool redo;
};

template <class Payload>
using Signal = boost::signals2::signal<void(Payload&)>;

template <class Payload>
void send(const Signal<Payload>& signal, const Payload& value)
{
    auto* p_payload = new Payload(value);
    benchmark::DoNotOptimize(p_payload); // or the compiler might do without the heap
    signal(*p_payload);
    delete p_payload;
}

/// The peer: Qt's own undo stack, and the four messages of an insertion with a receiver for each.
void push_and_signals2(benchmark::State& state)
{
    Signal<DocumentPayload> document_signal;
    Signal<HistoryPayload> history_signal;
    Signal<CommandPayload> command_signal;
    document_signal.connect(
        [](DocumentPayload& payload) { s_received += static_cast<unsigned>(payload.change_type); });
    history_signal.connect([](HistoryPayload&) { ++s_received; });
    command_signal.connect([](CommandPayload&) { ++s_received; });
    QUndoStack stack;
    fill(stack, static_cast<int>(state.range(0)));
    const unsigned long long before = s_received;
    for (auto _ : state) {
        send(document_signal, {housekeeping::DocumentMessage::Busy, 1});
        auto* const p_command = new QUndoCommand(QStringLiteral("No operation"));
        stack.push(p_command);
        send(history_signal, {0});
        send(command_signal, {p_command, 1, housekeeping::CommandMessage::Done, false});
        send(document_signal, {housekeeping::DocumentMessage::Idle, 1});
    }
    if (s_received - before != static_cast<unsigned long long>(state.iterations()) * (s_busy_and_idle + 2)) {
        state.SkipWithError("not every signal arrived");
    }
}
BENCHMARK(push_and_signals2)->Arg(10);

/// Measures @p steps and not @p way_back, which restores the history.
template <class Steps, class WayBack>
void measure_steps(benchmark::State& state, Steps steps, WayBack way_back)
{
    typedef std::chrono::steady_clock Clock;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        for (int step = 0; step < s_steps; ++step) {
            steps();
        }
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        for (int step = 0; step < s_steps; ++step) {
            way_back();
        }
    }
}

void undo(benchmark::State& state)
{
    const auto count = static_cast<unsigned long long>(state.range(0));
    const housekeeping::AbstractDocument& document = document_with(count);
    housekeeping::CommandManager& manager = housekeeping::CommandManager::instance();
    measure_steps(
        state, [&] { manager.undo(document.id()); }, [&] { manager.redo(document.id()); });
    if (document.document_history().undoSize() != count) {
        state.SkipWithError("the history did not keep its size");
    }
}
BENCHMARK(undo)->Arg(10)->Arg(100000)->UseManualTime();

void redo(benchmark::State& state)
{
    const auto count = static_cast<unsigned long long>(state.range(0));
    const housekeeping::AbstractDocument& document = document_with(count);
    housekeeping::CommandManager& manager = housekeeping::CommandManager::instance();
    for (int step = 0; step < s_steps; ++step) {
        manager.undo(document.id());
    }
    measure_steps(
        state, [&] { manager.redo(document.id()); }, [&] { manager.undo(document.id()); });
    for (int step = 0; step < s_steps; ++step) {
        manager.redo(document.id());
    }
    if (document.document_history().undoSize() != count) {
        state.SkipWithError("the history did not keep its size");
    }
}
BENCHMARK(redo)->Arg(10)->Arg(100000)->UseManualTime();

const Ratio s_unlogged(
    "insert, log apart / QUndoStack::push and four boost::signals2 calls with heap payloads",
    "insert_heard/10", "push_and_signals2/10", 1.3);
const Ratio s_insert("insert with 100,000 commands in the history, log apart / with 10", "insert_bare/100000",
    "insert_bare/10", 1.05);
const Ratio s_undo(
    "undo with 100,000 commands in the history, log apart / with 10", "undo/100000", "undo/10", 1.05);
const Ratio s_redo(
    "redo with 100,000 commands in the history, log apart / with 10", "redo/100000", "redo/10", 1.05);

} // namespace

#include "UnloggedCommandBenchmark.moc"
