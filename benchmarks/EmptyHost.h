#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>

#include <benchmark/benchmark.h>

class QUndoStack;

// The least that a host brings: a document of nothing, and a command that does nothing.

namespace empty_host {

namespace housekeeping = tarqa::housekeeping;

class NoOp : public housekeeping::AbstractCommand
{
public:
    explicit NoOp(const housekeeping::DocumentId& id);
    void rollback() override;

protected:
    void remember() override;
    void do_command() override;
    void undo_command() override;
};

/// A document with @p count commands in its history, the same one each time.
housekeeping::AbstractDocument& document_with(unsigned long long count);

/// The peer: limits an empty stack to @p count commands and pushes as many, of the same name as NoOp's.
void fill(QUndoStack& stack, int count);

/// Measures the insertion of NoOp into a document with as many commands as the benchmark's first argument
/// says. Each is taken out of the history again, as the peer's stack deletes one for each new one.
void insert_and_forget(benchmark::State& state);

} // namespace empty_host
