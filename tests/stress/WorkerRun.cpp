#include "WorkerRun.h"

#include "support/Controllers.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <boost/make_shared.hpp>

namespace load {

using namespace tarqa::housekeeping;

namespace {

const unsigned s_count = 8;
const unsigned s_commands = 100; // in each history

} // namespace

ShownDocuments::ShownDocuments()
{
    // What belongs to the main thread, before another thread asks for it.
    ErrorHandler::instance();
    MessageHandler::instance();
    support::init_controllers();
    while (m_documents.size() < s_count) {
        m_documents.push_back(&NumbersDocument::create());
        for (unsigned number = 0; number < s_commands; ++number) {
            CommandManager::instance().insert(
                boost::make_shared<WorkerCommand>(m_documents.back()->id(), "command", [](WorkerCommand&) {}),
                false);
        }
    }
    gui::PresentationManager::instance().init();
}

ShownDocuments::~ShownDocuments()
{
    TestAccess::destroy<gui::PresentationManager>(); // its widgets need the application
    for (const NumbersDocument* p_document : m_documents) {
        DocumentManager::instance().destroy_document(
            p_document->id(), true, false, false, DocumentId::null());
    }
}

WorkerRun::WorkerRun(const NumbersDocument& document, const WorkerCommand::Work& work)
    : m_sp_command(boost::make_shared<WorkerCommand>(document.id(), "long command", work))
{
    m_sp_command->setProgress(&m_progress);
    m_thread = std::thread([this] {
        CommandManager::instance().insert(m_sp_command, false);
        m_end = Clock::now();
        m_finished = true;
    });
}

WorkerRun::~WorkerRun()
{
    join();
    m_sp_command->setProgress(nullptr); // the history keeps the command
}

void WorkerRun::join()
{
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

} // namespace load
