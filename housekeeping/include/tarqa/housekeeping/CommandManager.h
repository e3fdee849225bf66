#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/utilities/IdCreator.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QMutex>

#include <boost/shared_ptr.hpp>

#include <atomic>

namespace tarqa::housekeeping {

class AbstractCommand;

/**
 * The one road for every command: runs, undoes and redoes it in the calling thread, marks its document busy
 * meanwhile, and keeps the document's history in step.
 *
 * One non-recursive mutex serialises all runs of all documents; a caller in another thread waits its turn.
 * Neither a command nor a subscriber of the messages that are sent during a run may call insert(), undo() or
 * redo() (it would wait for itself): use a CompositeCommand for commands inside commands. The same holds for
 * timers and queued slots in the event loop of the box that shows a failure, or of a composite's question.
 * The main thread inserts nothing while a worker's run is on.
 *
 * A singleton, destroyed in phase 5 of the ordered destruction.
 */
class TQ_HK_EXPORT CommandManager
{
    Q_DECLARE_TR_FUNCTIONS(tarqa::housekeeping::CommandManager)

public:
    /// The one object; made at first use.
    static CommandManager& instance();
    /// The same, to look at only.
    static const CommandManager& const_instance();

    /// A fresh id. Any thread.
    CommandId createId();

    /// Records a new command in its document's history and runs it. A null command is logged and ignored;
    /// after finish() nothing happens.
    /// @param sp_command belongs to the history afterwards, as long as it can be undone or redone
    /// @param ignored kept for callers, without effect
    /// @throws HousekeepingException (1014) if the document does not exist
    void insert(boost::shared_ptr<AbstractCommand> sp_command, bool ignored);
    /// Undoes the last command of a document; nothing happens if there is none. @throws as insert()
    void undo(DocumentId document_id);
    /// Redoes the last undone command of a document; nothing happens if there is none. @throws as insert()
    void redo(DocumentId document_id);

    /// From now on insert() does nothing; for shutting down. Undo and redo still work.
    void finish();

protected:
    CommandManager();
    virtual ~CommandManager();

private:
    friend class pkBase::pkSingleton<CommandManager>;
    friend class TestAccess;
    CommandManager(const CommandManager&) = delete;
    CommandManager& operator=(const CommandManager&) = delete;
    static pkBase::pkSingleton<CommandManager>& get_instance();
    static void destroy_instance();

    utilities::IdCreator m_id_creator;
    QMutex m_mutex; // serialises all runs
    std::atomic<bool> m_finished{false};
};

} // namespace tarqa::housekeeping
