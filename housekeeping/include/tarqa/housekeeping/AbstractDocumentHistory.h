#pragma once

#include <tarqa/housekeeping/CommandDetails.h>

#include <boost/shared_ptr.hpp>

#include <mutex>
#include <vector>

namespace tarqa::housekeeping {

class AbstractCommand;

/**
 * The undo and redo stacks of one document. Held by value in the document; the stacks share the ownership of
 * the commands.
 *
 * The command manager makes all changes, under its mutex; each is announced at once with a
 * DocumentHistoryMsg. The lists and sizes may be read from any thread meanwhile: the lists hold copies, taken
 * under each command's own mutex, also of a command that is running and changes its description.
 */
class TQ_HK_EXPORT AbstractDocumentHistory
{
public:
    AbstractDocumentHistory();
    AbstractDocumentHistory(const AbstractDocumentHistory&);
    AbstractDocumentHistory& operator=(const AbstractDocumentHistory&);
    virtual ~AbstractDocumentHistory();

    /// Takes in a command that is about to run: merges it with the last one where both agree, else keeps it,
    /// and clears the redo stack. A command whose validUndo() is false is announced only; a null one is not
    /// kept either, but clears the redo stack.
    void insertUndoCommand(const boost::shared_ptr<AbstractCommand>& sp);
    /// Takes the last command for undoing: it moves to the redo stack, or, if it says so, empties that.
    /// @return null if there is none
    boost::shared_ptr<AbstractCommand> transferUndoCommand();
    /// Takes the last undone command for redoing: it moves back to the undo stack. @return null if there is
    /// none
    boost::shared_ptr<AbstractCommand> transferRedoCommand();
    /// Forgets the last command, silently.
    void removeLastUndo();

    /// The details of at most @p n commands, most recent first.
    std::vector<CommandDetails> getUndoCommandDetails(const unsigned long long& n) const;
    /// The same of the undone commands, the last undone first.
    std::vector<CommandDetails> getRedoCommandDetails(const unsigned long long& n) const;

    /// How many commands can be undone.
    unsigned long long undoSize() const;
    /// How many commands can be redone.
    unsigned long long redoSize() const;
    /// True if both stacks are empty.
    bool empty() const;

private:
    typedef std::vector<boost::shared_ptr<AbstractCommand>> Stack;

    bool merge_with_last(const boost::shared_ptr<AbstractCommand>& sp);
    std::vector<CommandDetails> details_of(const Stack& stack, unsigned long long n) const;
    static void announce();

    Stack m_undo; // the back is the most recent; guarded by m_mutex
    Stack m_redo; // the back is the most recently undone; guarded by m_mutex
    mutable std::mutex m_mutex; // around one access to the stacks, never while a command or a subscriber runs
};

} // namespace tarqa::housekeeping
