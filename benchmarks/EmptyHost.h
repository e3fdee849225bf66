#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>

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

} // namespace empty_host
