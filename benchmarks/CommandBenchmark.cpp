// What the insertion of a command costs, apart from what the command itself does, with everything that
// belongs to it: busy marks, messages, history, and the entry in the log. With few and with many commands in
// the history.

#include "EmptyHost.h"
#include "RatioReporter.h"
#include "RawLog.h"

#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>

namespace {

using empty_host::fill;

void insert(benchmark::State& state)
{
    empty_host::insert_and_forget(state);
}
BENCHMARK(insert)->Arg(10)->Arg(1000)->Arg(10000)->Arg(100000);

/// The peer: Qt's own undo stack, and the line in a log that every run of a command leaves. At its limit, the
/// stack deletes a command for each new one.
void undo_stack_push(benchmark::State& state)
{
    QUndoStack stack;
    fill(stack, static_cast<int>(state.range(0)));
    const RawLog log;
    const std::string line = "DO>\tNo operation - Succeeded.\n";
    for (auto _ : state) {
        stack.push(new QUndoCommand(QStringLiteral("No operation")));
        log.append(line);
    }
    if (stack.count() != state.range(0)) {
        state.SkipWithError("the stack did not keep its size");
    }
}
BENCHMARK(undo_stack_push)->Arg(10)->Arg(1000)->Arg(10000)->Arg(100000);

const Ratio s_peer("insert of a command that does nothing / QUndoStack::push and one open-append-write-close",
    "insert/10", "undo_stack_push/10", 1.2);

} // namespace
