#include "Gui.h"

#include "support/MessageSpy.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <QtCore/QCoreApplication>

namespace load {

using namespace tarqa::housekeeping;
using tarqa::housekeeping::gui::PresentationManager;
using tarqa::housekeeping::gui::UndoRedoPresentation;

namespace {

const int s_interval = 2; // milliseconds
const unsigned long long s_listed = 50;

} // namespace

Gui::Gui(const std::vector<NumbersDocument*>& documents, Flow& flow, Faults& faults)
    : m_documents(documents)
    , m_flow(flow)
    , m_faults(faults)
    , m_sender(static_cast<unsigned>(documents.size()))
{
    PresentationManager::instance().init();
    DocumentManager::instance().current_document(documents.front()->id());
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(tick()));
}

Gui::~Gui()
{
    TestAccess::destroy<PresentationManager>(); // its widgets need the application
}

UndoRedoController& Gui::controller()
{
    return dynamic_cast<UndoRedoController&>(*ControllerManager::instance().controller("UndoRedoController"));
}

void Gui::silence()
{
    DocumentHistoryMsg::unsubscribe(&controller());
    DocumentMessage::unsubscribe(UndoRedoPresentation::instance().get());
    CommandMessage::unsubscribe(&DocumentManager::instance());
}

void Gui::run_until(const std::function<bool()>& finished)
{
    m_finished = finished;
    m_timer.start(s_interval);
    m_loop.exec();
    m_timer.stop();
}

void Gui::deliver_rest()
{
    if (!support::wait_until([] { return TestAccess::queued(MessageHandler::instance()) == 0; })) {
        m_faults.add("posted messages are not delivered");
    }
    QCoreApplication::sendPostedEvents();
}

void Gui::tick()
{
    // Asked first: what ends meanwhile is listed once more.
    const bool finished = m_finished();
    list(m_listings % m_documents.size());
    m_sender.send(Way::Dispatch, Family::Application);
    m_sender.send(Way::Post, Family::FilesInsert);
    // Here and not when they come in: else the messages might never end, and no timer would get its turn.
    m_flow.give(m_caught_up);
    m_caught_up = 0;
    if (finished) {
        m_loop.quit();
    }
}

/// All that is allowed on the main thread while runs are on, for one document.
void Gui::list(std::size_t thread)
{
    ++m_listings;
    DocumentManager& documents = DocumentManager::instance();
    const DocumentId id = m_documents[thread]->id();
    m_current_changes += documents.current_document_id() != id ? 1 : 0;
    documents.current_document(id);
    UndoRedoPresentation::instance()->enable_edit_actions(!documents.document_busy(id));
    check(thread, controller().getUndoCommandDetails(s_listed));
    check(thread, controller().getRedoCommandDetails(s_listed));
    const AbstractDocumentHistory& history = documents.document_from_id(id).document_history();
    check(thread, history.getUndoCommandDetails(history.undoSize()));
    check(thread, history.getRedoCommandDetails(history.redoSize()));
    m_faults.compare("number of documents", static_cast<unsigned long long>(m_documents.size()),
        documents.num_documents());
}

/// The commands of a document are those of its thread, and their texts are whole.
void Gui::check(std::size_t thread, const std::vector<CommandDetails>& details)
{
    const std::string start = '@' + std::to_string(thread) + ':';
    for (const CommandDetails& command : details) {
        const std::string& description = command.description();
        if (command.name().rfind(start, 0) != 0
            || !(description.empty() || description.rfind("adds ", 0) == 0)) {
            m_faults.add(
                "listed at thread " + std::to_string(thread) + ": " + command.name() + ": " + description);
        }
    }
}

} // namespace load
