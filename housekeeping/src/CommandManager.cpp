#include <tarqa/housekeeping/CommandManager.h>

#include "Assertion.h"
#include "BusyMark.h"
#include "GuardedLocker.h"
#include "LoggingExceptions.h"
#include "RunningCommand.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/utilities/Pointers.h>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/CommandManager";

const GuardedMutex s_runs{"the command manager's mutex",
    "neither a command nor a subscriber of the messages of its run, nor a timer or queued slot in the event "
    "loop of its box, inserts, undoes or redoes; commands inside commands are a CompositeCommand's, and the "
    "main thread does none of it while a worker's run is on."};

/// Tells the user that the document is busy.
void refuse(BusyMark& mark, const QString& title, const QString& text)
{
    mark.leave();
    ErrorHandler::instance().message(title.toStdString(), text.toStdString(), QMessageBox::Ok);
}

AbstractDocumentHistory& history_of(const DocumentId& id)
{
    return DocumentManager::instance().document_from_id(id).document_history();
}

} // namespace

CommandManager::CommandManager()
    : m_id_creator(utilities::IdCreator::Order::InEachThread) // a number for each child of each composite
{ }

CommandManager::~CommandManager()
{
    m_finished = true;
}

pkBase::pkSingleton<CommandManager>& CommandManager::get_instance()
{
    static pkBase::pkSingleton<CommandManager> s_holder(
        pkBase::pkDestructionPhase(5), &CommandManager::destroy_instance);
    return s_holder;
}

CommandManager& CommandManager::instance()
{
    return get_instance().get();
}

const CommandManager& CommandManager::const_instance()
{
    return instance();
}

void CommandManager::destroy_instance()
{
    get_instance().destroy();
}

CommandId CommandManager::createId()
{
    return CommandId::build(m_id_creator.createNextId());
}

void CommandManager::finish()
{
    m_finished = true;
}

void CommandManager::insert(boost::shared_ptr<AbstractCommand> sp_command, bool)
{
    if (!HK_ASSERT(!utilities::null_pointer(sp_command), "!utilities::null_pointer( sp_command )")) {
        return;
    }
    HK_ASSERT(!sp_command->empty(), "!sp_command->empty()");
    const GuardedLocker lock(&m_mutex, s_runs);
    if (m_finished) {
        return;
    }
    const DocumentId id = sp_command->document_id();
    BusyMark mark(id, sp_command->set_document_busy());
    if (!mark.set()) {
        refuse(mark, tr("Warning"),
            tr("This Document is busy - please try again when current operation is finished"));
        return;
    }
    history_of(id).insertUndoCommand(sp_command);
    sp_command->set_document_modified();
    const RunningCommand running(*sp_command, "do");
    AbstractCommand::Execute(sp_command.get()).run(false);
    mark.clear();
}

void CommandManager::undo(DocumentId document_id)
{
    const GuardedLocker lock(&m_mutex, s_runs);
    const boost::shared_ptr<AbstractCommand> sp_command = history_of(document_id).transferUndoCommand();
    if (!sp_command) {
        return;
    }
    BusyMark mark(document_id, sp_command->set_document_busy());
    if (!mark.set()) {
        refuse(mark, tr("Warning"),
            tr("This Document is busy - please try to UNDO again when current operation is finished"));
        return;
    }
    const RunningCommand running(*sp_command, "undo");
    AbstractCommand::UnExecute(sp_command.get()).run(false);
    mark.clear();
}

void CommandManager::redo(DocumentId document_id)
{
    const GuardedLocker lock(&m_mutex, s_runs);
    const boost::shared_ptr<AbstractCommand> sp_command = history_of(document_id).transferRedoCommand();
    if (!sp_command) {
        return;
    }
    BusyMark mark(document_id, sp_command->set_document_busy());
    if (!mark.set()) {
        refuse(mark, tr("Warning"),
            tr("This Document is busy - please try to REDO again when current operation is finished"));
        return;
    }
    sp_command->set_document_modified();
    const RunningCommand running(*sp_command, "redo");
    AbstractCommand::Execute(sp_command.get()).run(true);
    mark.clear();
}

} // namespace tarqa::housekeeping
