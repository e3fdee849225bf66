#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <utility>
#include <vector>

namespace tarqa::housekeeping {

/**
 * Several commands as one undoable step: one entry in the undo list, one protocol line with a line for each
 * child.
 *
 * The children run in the order of insertion, each remembering right before it runs. A cancelled child is
 * rolled back and the batch goes on. When a child fails, the user is asked whether to go on; Cancel, and
 * always the failure of the last child (unless "Yes to All" was chosen), rolls the whole batch back. A child
 * that failed and was passed over keeps its outcome flag, deliberately, so undo calls it too. Because it may
 * ask, a composite runs on the main thread; anywhere else the question is answered with going on.
 *
 * Undo runs the children newest first, but rollback() goes in the order of insertion: a composite whose
 * children build on each other's results overrides it. setProgress() and request_cancel() do not reach the
 * children: a composite that is to be cancelled gives each child a progress sink that reports to its own
 * progress(). No CommandMessage is sent for children, and finished() is not called for one that was cancelled
 * or failed.
 *
 * When two composites merge, children of the newer one that nobody
 * absorbed are dropped with it, deliberately: build a composite that must never lose steps with @p
 * stack_identical false.
 */
class TQ_HK_EXPORT CompositeCommand : public AbstractCommand
{
    Q_DECLARE_TR_FUNCTIONS(tarqa::housekeeping::CompositeCommand)

public:
    /// A child and whether it is done and not undone.
    typedef std::vector<std::pair<boost::shared_ptr<AbstractCommand>, bool>> Commands;

    /// @param document_id the document to change, by the children too
    /// @param name as shown to the user
    /// @param stack_identical whether it may be merged with a composite next to it in the history
    CompositeCommand(const DocumentId& document_id, const std::string& name, bool stack_identical);
    CompositeCommand(const CompositeCommand&);
    CompositeCommand& operator=(const CompositeCommand&);

    ~CompositeCommand() override;
    /// The number of children.
    unsigned long long size() const override;
    /// Rolls back the children that are done, oldest first.
    void rollback() override;
    bool stackWith(boost::shared_ptr<AbstractCommand> newer) override;

    /// Adds a child; a null one is logged and ignored.
    void push_back(boost::shared_ptr<AbstractCommand> command);
    /// The children, in the order of insertion.
    const Commands& commands() const { return m_commands; }
    /// Forgets the children. Not while the composite runs, and not after it ran: undo would do nothing.
    void clear();

protected:
    void remember() override;
    void do_command() override;
    void undo_command() override;
    void finished(bool succeeded) override;

private:
    friend class TestAccess;

    void run_child(Commands::value_type& child, bool is_last, bool& ask_no_more);
    static void ask_or_give_up(const HousekeepingException& failure, bool is_last, bool& ask_no_more);

    Commands m_commands;
};

} // namespace tarqa::housekeeping
