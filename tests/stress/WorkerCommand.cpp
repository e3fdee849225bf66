#include "WorkerCommand.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtWidgets/QAction>

#include <utility>

namespace load {

using namespace tarqa::housekeeping;
using tarqa::housekeeping::gui::UndoRedoPresentation;

WorkerCommand::WorkerCommand(const DocumentId& document, const std::string& name, Work work)
    : AbstractCommand(document, name)
    , m_work(std::move(work))
{ }

void WorkerCommand::report(unsigned percentage)
{
    reports.push_back(Clock::now());
    progress(percentage);
}

ProgressRelay::ProgressRelay()
{
    // The run emits in its own thread, so these are queued.
    connect(this, SIGNAL(percentage(unsigned)), this, SLOT(show_percentage(unsigned)), Qt::AutoConnection);
    connect(this, SIGNAL(text(QString)), this, SLOT(show_text(QString)), Qt::AutoConnection);
}

void ProgressRelay::show_percentage(unsigned value)
{
    shown_percentage = value;
    ++shown;
}

namespace {

const unsigned long long s_listed = 100;

UndoRedoController& controller()
{
    return dynamic_cast<UndoRedoController&>(*ControllerManager::instance().controller("UndoRedoController"));
}

void list_histories(const std::vector<NumbersDocument*>& documents)
{
    for (const NumbersDocument* p_document : documents) {
        const AbstractDocumentHistory& history = p_document->document_history();
        history.getUndoCommandDetails(s_listed);
        history.getRedoCommandDetails(s_listed);
        history.undoSize();
        history.redoSize();
        history.empty();
    }
}

void list_by_controller()
{
    const ControllerLocker locker(controller());
    controller().getUndoCommandDetails(s_listed);
    controller().getRedoCommandDetails(s_listed);
}

void look_up(const std::vector<NumbersDocument*>& documents)
{
    const DocumentManager& manager = DocumentManager::const_instance();
    for (const NumbersDocument* p_document : documents) {
        manager.document_exists(p_document->id());
        manager.document_from_id(p_document->id());
        manager.document_busy(p_document->id());
    }
    manager.documents_busy();
    manager.current_documents();
    manager.num_documents();
    manager.current_document_id();
    manager.current_state("UndoRedoController");
}

void make_next_current(const std::vector<NumbersDocument*>& documents)
{
    DocumentManager& manager = DocumentManager::instance();
    std::size_t at = 0;
    while (at < documents.size() && documents[at]->id() != manager.current_document_id()) {
        ++at;
    }
    manager.current_document(documents[(at + 1) % documents.size()]->id());
}

void mark(const NumbersDocument& document)
{
    DocumentManager::instance().document_busy(document.id(), true);
    DocumentManager::instance().document_busy(document.id(), false);
}

void create_and_destroy()
{
    const DocumentId current = DocumentManager::instance().current_document_id();
    const DocumentId id = NumbersDocument::create().id();
    DocumentManager::instance().destroy_document(id, false, false, false, current);
}

} // namespace

std::vector<GuiCall> gui_calls(const std::vector<NumbersDocument*>& documents)
{
    return {
        {"lists of all histories", [documents] { list_histories(documents); }},
        {"lists through the controller", [] { list_by_controller(); }},
        {"lists of the presentation", [] { UndoRedoPresentation::instance()->enable_edit_actions(true); }},
        // The action does nothing while a document is busy; above all it does not wait.
        {"undo and redo actions, refused",
            [] {
                UndoRedoPresentation::instance()->undo_action()->trigger();
                UndoRedoPresentation::instance()->redo_action()->trigger();
            }},
        {"look-ups of documents", [documents] { look_up(documents); }},
        {"another document made current", [documents] { make_next_current(documents); }},
        {"busy mark on the document of the run", [documents] { mark(*documents.front()); }},
        {"busy mark on another document", [documents] { mark(*documents.back()); }},
        {"document created and destroyed", [] { create_and_destroy(); }},
        {"id of a command", [] { CommandManager::instance().createId(); }},
        {"message sent", [] { Message::dispatch(ApplicationMessage::instance()); }},
        {"message posted", [] { ApplicationMessage::instance()->post(); }},
        {"entry in the log", [] { ErrorProtocol::instance().log_message("from the main thread"); }},
    };
}

} // namespace load
