#include <tarqa/housekeeping/UndoRedoController.h>

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractDocumentHistory.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include "Assertion.h"

#include <boost/make_shared.hpp>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/UndoRedoController";

/// Keeps the views still while several steps run, also if one of them throws.
class Ignoring
{
public:
    explicit Ignoring(bool& follow)
        : m_follow(follow)
    {
        m_follow = false;
    }
    ~Ignoring() { m_follow = true; }
    Ignoring(const Ignoring&) = delete;
    Ignoring& operator=(const Ignoring&) = delete;

private:
    bool& m_follow;
};

/// By the id: the document of a state may be gone, and its history with it.
const AbstractDocumentHistory& history_of(const DocumentId& id)
{
    return DocumentManager::instance().document_from_id(id).document_history();
}

} // namespace

UndoRedoController::State::State(AbstractDocument& document, DocumentId id, std::string controller_name)
    : AbstractState(document, id, controller_name)
{ }

UndoRedoController::State::State(const State&) = default;

UndoRedoController::State::~State() = default;

const AbstractDocumentHistory& UndoRedoController::State::document_history() const
{
    return owner().document_history();
}

UndoRedoController::UndoRedoController()
{
    DocumentHistoryMsg::subscribe(this, Qt::AutoConnection);
}

UndoRedoController::~UndoRedoController() = default;

bool UndoRedoController::state_exists() const
{
    // One share is the controller's own.
    return m_sp_undo_redo_state && m_sp_undo_redo_state.use_count() >= 2
        && AbstractController::state_exists();
}

void UndoRedoController::undo(const unsigned long long& n)
{
    if (!HK_ASSERT(m_sp_undo_redo_state, "!utilities::null_pointer(m_sp_undo_redo_state)")) {
        return;
    }
    const DocumentId id = m_sp_undo_redo_state->document_id();
    const Ignoring ignoring(m_follow_history);
    // Further steps would do nothing.
    for (unsigned long long i = 0; i < n && history_of(id).undoSize() > 0; ++i) {
        CommandManager::instance().undo(id);
    }
}

void UndoRedoController::redo(const unsigned long long& n)
{
    if (!HK_ASSERT(m_sp_undo_redo_state, "!utilities::null_pointer(m_sp_undo_redo_state)")) {
        return;
    }
    const DocumentId id = m_sp_undo_redo_state->document_id();
    const Ignoring ignoring(m_follow_history);
    // Further steps would do nothing.
    for (unsigned long long i = 0; i < n && history_of(id).redoSize() > 0; ++i) {
        CommandManager::instance().redo(id);
    }
}

unsigned long long UndoRedoController::undo_count() const
{
    if (!HK_ASSERT(m_sp_undo_redo_state, "utilities::valid_pointer(m_sp_undo_redo_state)")) {
        return 0;
    }
    return m_sp_undo_redo_state->document_history().undoSize();
}

unsigned long long UndoRedoController::redo_count() const
{
    if (!HK_ASSERT(m_sp_undo_redo_state, "utilities::valid_pointer(m_sp_undo_redo_state)")) {
        return 0;
    }
    return m_sp_undo_redo_state->document_history().redoSize();
}

std::vector<CommandDetails> UndoRedoController::getUndoCommandDetails(const unsigned long long& n) const
{
    if (!HK_ASSERT(m_sp_undo_redo_state, "utilities::valid_pointer(m_sp_undo_redo_state)")) {
        return {};
    }
    return m_sp_undo_redo_state->document_history().getUndoCommandDetails(n);
}

std::vector<CommandDetails> UndoRedoController::getRedoCommandDetails(const unsigned long long& n) const
{
    if (!HK_ASSERT(m_sp_undo_redo_state, "utilities::valid_pointer(m_sp_undo_redo_state)")) {
        return {};
    }
    return m_sp_undo_redo_state->document_history().getRedoCommandDetails(n);
}

void UndoRedoController::handle_message(DocumentHistoryMsg&)
{
    if (m_follow_history) {
        force_update();
    }
}

boost::shared_ptr<AbstractState> UndoRedoController::create_state(AbstractDocument& document)
{
    m_sp_undo_redo_state = boost::make_shared<State>(document, document.id(), controller_name());
    return m_sp_undo_redo_state;
}

void UndoRedoController::update_state(boost::shared_ptr<AbstractState> state)
{
    m_sp_undo_redo_state = boost::dynamic_pointer_cast<State>(state);
    force_update();
}

} // namespace tarqa::housekeeping
