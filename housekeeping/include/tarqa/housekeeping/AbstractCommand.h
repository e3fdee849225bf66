#pragma once

#include <tarqa/housekeeping/CommandDetails.h>
#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/Runnable.h>

#include <QtCore/QCoreApplication>

#include <boost/shared_ptr.hpp>

#include <atomic>
#include <string>

namespace pkBase {
class AbstractProgress;
}

namespace tarqa::housekeeping {

/**
 * A change to a document that knows how it is done, undone and described.
 *
 * The host derives its commands from it, makes them with `boost::make_shared` and hands them to
 * CommandManager::insert(), which runs them in the calling thread, under its one mutex. A do run calls
 * remember(), do_command() and finished(); when do_command() throws a CancelCommandException or a
 * FailedCommandException, rollback() comes in between. The undo history keeps the command while it can be
 * undone.
 *
 * A command reports with progress(), which is also where a request to cancel is noticed, provided that a
 * progress sink is attached. It must not call the command manager, and it locks no controller.
 *
 * Everything but request_cancel() belongs to the thread that runs the command or, between runs, to whoever
 * holds it, name() and details() included. The lists of the undo history may be read in other threads all the
 * same: they copy the details under a private mutex, one for all commands, which the setters take too.
 */
class TQ_HK_EXPORT AbstractCommand
{
    Q_DECLARE_TR_FUNCTIONS(tarqa::housekeeping::AbstractCommand)

public:
    class Execute;
    class UnExecute;

    virtual ~AbstractCommand();

    /// 1; for a composite the number of its children. A command of size 0 is logged when it is inserted.
    virtual unsigned long long size() const;
    /// Told the id of the object that the command made or changed; the base does nothing.
    virtual void rememberGeo(unsigned long long id);
    /// Takes back what a failed or cancelled do_command() did so far.
    virtual void rollback() = 0;
    /// Merges @p newer, which has not run yet and runs next, into this command. @return false if it cannot be
    /// merged
    virtual bool stackWith(boost::shared_ptr<AbstractCommand> newer);

    /// As shown to the user in the undo list; UTF-8.
    const std::string& name() const { return m_details.name(); }
    /// Name, description and icon, as the undo list shows them. Not for other threads than the one that runs
    /// the command.
    const CommandDetails& details() const { return m_details; }
    /// The command's own number, drawn when it was made.
    const CommandId& id() const { return m_id; }
    /// The document that it changes.
    const DocumentId& document_id() const { return m_document_id; }

    // The undo lists may copy the details in another thread while a run changes them; see the class comment.
    /// Renames the command in the undo list; UTF-8. In the thread that runs or holds it, as the next three.
    void setName(const std::string& name);
    /// Sets the text behind the name; UTF-8.
    void setDescription(const std::string& description);
    /// Sets the picture before the name.
    void setIcon(const QIcon& icon);
    /// Adds @p text to the description, after a comma.
    void appendDescription(const std::string& text);

    /// True if size() is 0.
    bool empty() const;

    /// Whether the command enters the undo history.
    bool validUndo() const { return m_valid_undo; }
    /// Whether its document is busy while it runs.
    bool set_document_busy() const { return m_set_document_busy; }
    /// Whether it may be merged with a neighbour in the history; the spelling is the interface's own.
    bool stackIndenticalCommand() const { return m_stack_identical; }
    /// Whether undoing it empties the redo stack.
    bool shouldClearRedoWhenUndoing() const { return m_clear_redo_when_undoing; }

    /// Attaches a progress sink, which must outlive the runs; null switches progress, and with it
    /// cancellation, off. Not owned.
    void setProgress(pkBase::AbstractProgress* p_progress) { m_progress = p_progress; }

    /// Asks the running command to stop at its next progress report. Any thread, signal handlers too.
    /// Forgotten when a run ends in cancellation, not before. Does not reach the children of a composite.
    void request_cancel() { m_cancelled = true; }

    /// The lines that a run of this command leaves in the error log, with one line for each child of a
    /// composite.
    /// @param prefix "DO>" or "UNDO>"
    /// @param succeeded how the run ended
    std::string protocol(const char* prefix, bool succeeded) const;

    /// A new object that does the command; the caller owns it. Also marks the document as modified.
    /// @throws HousekeepingException (1014) if the document does not exist
    Execute* execute_runnable();
    /// A new object that undoes the command; the caller owns it.
    UnExecute* unexecute_runnable();

protected:
    /// Draws a fresh id. @param document_id the document to change @param name as shown to the user
    AbstractCommand(DocumentId document_id, const std::string& name);
    /// A copy keeps the id, the flags and the progress sink.
    AbstractCommand(const AbstractCommand&);
    AbstractCommand& operator=(const AbstractCommand&);

    /// Saves what undo will need; called right before do_command().
    virtual void remember() = 0;
    /// The change itself.
    virtual void do_command() = 0;
    /// Reverses the change. Whatever it throws is fatal, a cancellation too: it must not call progress().
    virtual void undo_command() = 0;
    /// Called after every run, but not for a composite's child that was cancelled or failed; the base does
    /// nothing. @param succeeded always true after undo
    virtual void finished(bool succeeded);

    /// Reports how far the command is, in per cent (above 100: logged, and passed on). Does nothing without a
    /// progress sink.
    /// @throws CancelCommandException if cancellation was requested
    void progress(unsigned int percentage) const;
    /// Reports what the command is doing; does nothing without a progress sink.
    void progress_text(const std::string& text) const;

    // Behaviour, set in the constructors of derived commands.
    /// See validUndo().
    bool m_valid_undo = true;
    /// See set_document_busy().
    bool m_set_document_busy = true;
    /// See stackIndenticalCommand().
    bool m_stack_identical = false;
    /// See shouldClearRedoWhenUndoing().
    bool m_clear_redo_when_undoing = false;

    /// A flag that any thread and a signal handler may set; a copy starts with its value.
    class CancelFlag
    {
    public:
        CancelFlag() = default;
        /// Begins with the other's value.
        CancelFlag(const CancelFlag& other)
            : m_value(other.m_value.load())
        { }
        /// Takes the other's value.
        CancelFlag& operator=(const CancelFlag& other) { return *this = static_cast<bool>(other); }
        /// Sets or clears the flag.
        CancelFlag& operator=(bool value)
        {
            m_value = value;
            return *this;
        }
        /// Whether the flag is set.
        operator bool() const { return m_value; }

    private:
        std::atomic<bool> m_value{false};
    };

    /// The request to cancel.
    CancelFlag m_cancelled;

private:
    friend class AbstractDocumentHistory; // copies the details
    friend class CommandManager; // runs it
    friend class CompositeCommand; // runs its children
    friend class TestAccess;

    void throw_if_cancelled() const;
    void set_document_modified() const;
    std::string begin_protocol(const char* prefix) const;
    void end_protocol(std::string& protocol, bool succeeded) const;

    CommandDetails details_copy() const;

    bool m_may_be_composite = false; // most are none, and are not asked
    CommandDetails m_details; // written under the mutex of all details
    CommandId m_id;
    DocumentId m_document_id;
    pkBase::AbstractProgress* m_progress = nullptr; // not owned
};

/// One do run; see AbstractCommand. Copyable. Runs in the calling thread, without the command manager's
/// mutex: a host that runs one by itself takes care that nothing else runs on the document.
class TQ_HK_EXPORT AbstractCommand::Execute : public Runnable
{
public:
    /// @p p_command must outlive the run. Not owned.
    explicit Execute(AbstractCommand* p_command);
    void run(bool redo) override;
    ~Execute() override;

private:
    bool attempt();

    AbstractCommand* m_p_command; // not owned
};

/// One undo run; see AbstractCommand. Copyable. For threads see Execute.
class TQ_HK_EXPORT AbstractCommand::UnExecute : public Runnable
{
public:
    /// @p p_command must outlive the run. Not owned.
    explicit UnExecute(AbstractCommand* p_command);
    void run(bool redo) override;
    ~UnExecute() override;

private:
    AbstractCommand* m_p_command; // not owned
};

} // namespace tarqa::housekeeping
