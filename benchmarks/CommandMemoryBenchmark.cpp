// The memory that a command takes in the history: the object and what it holds, its shared pointer's count,
// its place in the history, and what the heap adds to each. No payload of a host's.

#include "EmptyHost.h"
#include "RatioReporter.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>

#include <boost/make_shared.hpp>

#include <malloc.h>

namespace housekeeping = tarqa::housekeeping;

namespace {

using empty_host::NoOp;

constexpr int s_commands = 100000;

/// Everything that is taken from the heap at the moment, in bytes.
double bytes_in_use()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks) + static_cast<double>(heap.hblkhd);
}

void memory_of_command(benchmark::State& state)
{
    housekeeping::DocumentManager& documents = housekeeping::DocumentManager::instance();
    housekeeping::CommandManager& manager = housekeeping::CommandManager::instance();
    double bytes = 0;
    for (auto _ : state) {
        housekeeping::AbstractDocument& document = documents.create_document();
        const double before = bytes_in_use();
        for (int count = 0; count < s_commands; ++count) {
            manager.insert(boost::make_shared<NoOp>(document.id()), false);
        }
        bytes = bytes_in_use() - before;
        documents.destroy_document(document.id(), true, false, false, housekeeping::DocumentId::null());
    }
    state.counters["bytes"] = bytes / s_commands;
}
BENCHMARK(memory_of_command)->Iterations(1);

/// The peer. Its name is a constant of the program, which takes nothing from the heap: the least that it can
/// be.
void memory_of_undo_command(benchmark::State& state)
{
    double bytes = 0;
    for (auto _ : state) {
        QUndoStack stack;
        const double before = bytes_in_use();
        for (int count = 0; count < s_commands; ++count) {
            stack.push(new QUndoCommand(QStringLiteral("No operation")));
        }
        bytes = bytes_in_use() - before;
    }
    state.counters["bytes"] = bytes / s_commands;
}
BENCHMARK(memory_of_undo_command)->Iterations(1);

const Ratio s_memory("memory of a command in the history / of a QUndoCommand in a QUndoStack",
    "memory_of_command", "memory_of_undo_command", 3, "bytes");

} // namespace
