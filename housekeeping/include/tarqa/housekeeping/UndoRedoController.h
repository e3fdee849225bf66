#pragma once

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/CommandDetails.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <vector>

namespace tarqa::housekeeping {

class AbstractDocumentHistory;
class DocumentHistoryMsg;

/**
 * How menus and buttons reach the undo history of the current document: undoes and redoes any number of
 * steps, gives the details of what could be undone and redone, and redraws its views when a history changes.
 *
 * The library registers it under the name "UndoRedoController", so ControllerManager::init() always makes it.
 * Main thread; undo() and redo() run commands under the command manager's mutex.
 */
class TQ_HK_EXPORT UndoRedoController : public AbstractController
{
    Q_OBJECT

public:
    /// Which document the controller serves.
    class TQ_HK_EXPORT State : public AbstractState
    {
    public:
        /// As AbstractState.
        State(AbstractDocument& document, DocumentId id, std::string controller_name);
        State(const State&);
        ~State() override;

        /// Valid as long as the document is.
        const AbstractDocumentHistory& document_history() const;
    };

    UndoRedoController();
    ~UndoRedoController() override;

    /// True while there is a current document: the document still holds the state.
    bool state_exists() const override;

    /// Undoes the last @p n commands of the current document, or as many as there are. The views are not
    /// redrawn, neither meanwhile nor afterwards: that is the caller's, who holds a ControllerLocker and
    /// calls finished(). Asserts that there is a state.
    /// @throws HousekeepingException (1014) if the state's document does not exist any more
    void undo(const unsigned long long& n);
    /// The same for the last @p n undone commands.
    void redo(const unsigned long long& n);

    /// How many commands can be undone. Asserts that there is a state.
    unsigned long long undo_count() const;
    /// How many commands can be redone. Asserts that there is a state.
    unsigned long long redo_count() const;

    /// The details of at most @p n commands, most recent first. Asserts that there is a state.
    std::vector<CommandDetails> getUndoCommandDetails(const unsigned long long& n) const;
    /// The same of what can be redone, the last undone first.
    std::vector<CommandDetails> getRedoCommandDetails(const unsigned long long& n) const;

private slots:
    /// Of whichever document.
    void handle_message(housekeeping::DocumentHistoryMsg& message);

private:
    friend class TestAccess;

    boost::shared_ptr<AbstractState> create_state(AbstractDocument& document) override;
    void update_state(boost::shared_ptr<AbstractState> state) override;

    boost::shared_ptr<State> m_sp_undo_redo_state;
    bool m_follow_history = true; // while false, messages redraw nothing
};

} // namespace tarqa::housekeeping
