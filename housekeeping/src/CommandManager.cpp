#include <tarqa/housekeeping/CommandManager.h>

#include "Assertion.h"
#include "LoggingExceptions.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/utilities/Pointers.h>

#include <memory>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/CommandManager";

/// The busy mark of a run: it is taken away on every way out.
class BusyMark
{
public:
    /// @param wanted whether the command asks for a mark at all
    BusyMark(const DocumentId& id, bool wanted)
        : m_id(id)
        , m_wanted(wanted)
    { }
    ~BusyMark()
    {
        logging_exceptions(
            "An unknown exception was thrown while a document became idle", [this] { clear(); });
    }
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;

    /// @return false if the document refuses, which it never does: marks nest
    bool set()
    {
        m_set = m_wanted; // before the call: a document that does not exist is marked all the same
        return !m_wanted || DocumentManager::instance().document_busy(m_id, true);
    }

    void clear()
    {
        if (m_set) {
            m_set = false;
            DocumentManager::instance().document_busy(m_id, false);
        }
    }

    /// Forgets the mark without taking it away: it belongs to somebody else.
    void leave() { m_set = false; }

private:
    DocumentId m_id;
    bool m_wanted;
    bool m_set = false;
};

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

CommandManager::CommandManager() = default;

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
    const QMutexLocker lock(&m_mutex);
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
    const std::unique_ptr<Runnable> runnable(sp_command->execute_runnable());
    runnable->run(false);
    mark.clear();
}

void CommandManager::undo(DocumentId document_id)
{
    const QMutexLocker lock(&m_mutex);
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
    const std::unique_ptr<Runnable> runnable(sp_command->unexecute_runnable());
    runnable->run(false);
    mark.clear();
}

void CommandManager::redo(DocumentId document_id)
{
    const QMutexLocker lock(&m_mutex);
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
    const std::unique_ptr<Runnable> runnable(sp_command->execute_runnable());
    runnable->run(true);
    mark.clear();
}

} // namespace tarqa::housekeeping
