// What the insertion of a command costs, apart from what the command itself does: the same with few and with
// many commands behind it.

#include "EmptyHost.h"
#include "RatioReporter.h"
#include "RawLog.h"

#include <tarqa/housekeeping/CommandManager.h>

#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>

#include <boost/make_shared.hpp>

namespace housekeeping = tarqa::housekeeping;

namespace {

using empty_host::document_with;
using empty_host::NoOp;

void insert(benchmark::State& state)
{
    const auto count = static_cast<unsigned long long>(state.range(0));
    housekeeping::AbstractDocument& document = document_with(count);
    housekeeping::CommandManager& manager = housekeeping::CommandManager::instance();
    for (auto _ : state) {
        manager.insert(boost::make_shared<NoOp>(document.id()), false);
        document.document_history().removeLastUndo(); // or there would soon be more behind it
    }
    if (document.document_history().undoSize() != count) {
        state.SkipWithError("the history did not keep its size");
    }
}
BENCHMARK(insert)->Arg(10)->Arg(100000);

/// The peer: Qt's own undo stack, and the line in a log that every run of a command leaves.
void undo_stack_push(benchmark::State& state)
{
    QUndoStack stack;
    stack.setUndoLimit(static_cast<int>(state.range(0)));
    const RawLog log;
    const std::string line = "DO>\tNo operation - Succeeded.\n";
    for (auto _ : state) {
        stack.push(new QUndoCommand(QStringLiteral("No operation")));
        log.append(line);
    }
}
BENCHMARK(undo_stack_push)->Arg(10);

const Ratio s_many("insert with 100,000 behind it / with 10", "insert/100000", "insert/10");
const Ratio s_peer("insert / QUndoStack::push and one open-append-close", "insert/10", "undo_stack_push/10");

} // namespace
