#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include "Assertion.h"
#include "BusyMark.h"
#include "PlainToolTips.h"
#include "UndoRedoSide.h"

#include <limits>

namespace tarqa::housekeeping::gui {

namespace {

const char* const s_source = "housekeeping/gui/src/UndoRedoPresentation";

const char* const s_undo_icon = ":/pkBaseQt/Resources/undo.png";
const char* const s_redo_icon = ":/pkBaseQt/Resources/redo.png";
const unsigned long long s_all = std::numeric_limits<unsigned long long>::max();

} // namespace

UndoRedoPresentation::UndoRedoPresentation() = default;

UndoRedoPresentation::~UndoRedoPresentation() = default;

boost::shared_ptr<UndoRedoPresentation> UndoRedoPresentation::instance()
{
    return boost::dynamic_pointer_cast<UndoRedoPresentation>(
        PresentationManager::instance().presentation("UndoRedoPresentation"));
}

// --- actions

void UndoRedoPresentation::build_actions()
{
    m_undo = std::make_unique<UndoRedoSide>(this,
        UndoRedoSide::Texts{
            tr("Undo"), tr("&Undo"), tr("Undo the last operation completed on the active document")},
        s_undo_icon, QKeySequence(tr("Ctrl+Z", "Edit|Undo")));
    m_redo = std::make_unique<UndoRedoSide>(this,
        UndoRedoSide::Texts{
            tr("Redo"), tr("&Redo"), tr("Redo the last operation undone on the active document")},
        s_redo_icon, QKeySequence(tr("Ctrl+Y", "Edit|Redo")));
    new PlainToolTips({undo_action(), redo_action(), undo_tool_bar_action(), redo_tool_bar_action()}, this);

    connect(undo_action(), SIGNAL(triggered()), this, SLOT(undo()));
    connect(redo_action(), SIGNAL(triggered()), this, SLOT(redo()));
    connect(undo_tool_bar_action(), SIGNAL(triggered()), this, SLOT(undo()));
    connect(redo_tool_bar_action(), SIGNAL(triggered()), this, SLOT(redo()));
    connect(&m_undo->list(), SIGNAL(triggered(QAction*)), this, SLOT(undo(QAction*)));
    connect(&m_redo->list(), SIGNAL(triggered(QAction*)), this, SLOT(redo(QAction*)));
    connect(&m_undo->list(), SIGNAL(hovered(QAction*)), this, SLOT(hoveredUndo(QAction*)));
    connect(&m_redo->list(), SIGNAL(hovered(QAction*)), this, SLOT(hoveredRedo(QAction*)));
    connect(&m_undo->list(), SIGNAL(aboutToShow()), this, SLOT(hoveredUndo()));
    connect(&m_redo->list(), SIGNAL(aboutToShow()), this, SLOT(hoveredRedo()));

    m_p_undo_quick_help
        = createQuickHelpKeySequenceEntry(undo_action(), tr("Undo"), QuickHelpSection::Editing);
    m_p_redo_quick_help
        = createQuickHelpKeySequenceEntry(redo_action(), tr("Redo"), QuickHelpSection::Editing);
}

AbstractQuickHelpEntry* UndoRedoPresentation::createQuickHelpKeySequenceEntry(
    QAction* p_action, const QString& description, const QuickHelpSection& section)
{
    if (!p_action || p_action->shortcut().isEmpty()) {
        return nullptr;
    }
    auto* const p_entry
        = new QuickHelpKeySequenceEntry(this, DocumentId::null(), p_action->shortcut(), description, section);
    p_entry->setAttached(true);
    return p_entry;
}

QAction* UndoRedoPresentation::undo_action()
{
    return m_undo ? m_undo->menu_action() : nullptr;
}

QAction* UndoRedoPresentation::redo_action()
{
    return m_redo ? m_redo->menu_action() : nullptr;
}

QAction* UndoRedoPresentation::undo_tool_bar_action()
{
    return m_undo ? m_undo->tool_bar_action() : nullptr;
}

QAction* UndoRedoPresentation::redo_tool_bar_action()
{
    return m_redo ? m_redo->tool_bar_action() : nullptr;
}

// --- presentation

void UndoRedoPresentation::init_presentation()
{
    build_actions();
}

void UndoRedoPresentation::build_presentation()
{
    MainWindowMessage::subscribe(this, Qt::AutoConnection);
    DocumentMessage::subscribe(this, Qt::AutoConnection);
    set_undo_redo_items(true);
}

void UndoRedoPresentation::update_presentation()
{
    set_undo_redo_items(true);
}

std::string UndoRedoPresentation::controller_name() const
{
    return "UndoRedoController";
}

UndoRedoController* UndoRedoPresentation::controller() const
{
    return qobject_cast<UndoRedoController*>(AbstractPresentation::controller());
}

void UndoRedoPresentation::enable_edit_actions(bool enable)
{
    set_undo_redo_items(enable);
}

void UndoRedoPresentation::set_undo_redo_items(bool fetch)
{
    if (!m_undo || !m_redo) {
        return;
    }
    unsigned long long undo_count = 0;
    unsigned long long redo_count = 0;
    std::vector<CommandDetails> undos;
    std::vector<CommandDetails> redos;
    UndoRedoController* const p_controller = fetch ? controller() : nullptr;
    if (fetch && HK_ASSERT(p_controller, "urc")) {
        const ControllerLocker locker(*p_controller);
        if (p_controller->state_exists()) {
            undo_count = p_controller->undo_count();
            redo_count = p_controller->redo_count();
            undos = p_controller->getUndoCommandDetails(m_undo->wanted(undo_count));
            redos = p_controller->getRedoCommandDetails(m_redo->wanted(redo_count));
        }
    }
    m_undo->set_items(undos, undo_count);
    m_redo->set_items(redos, redo_count);
    if (fetch) { // while a document is busy an open list does nothing, and stays
        m_undo->close_detached_list();
        m_redo->close_detached_list();
    }
}

// --- lists

/// Fills a long list, now that somebody looks at it.
void UndoRedoPresentation::fill_waiting_list(UndoRedoSide& side, DetailsOf details_of)
{
    UndoRedoController* const p_controller = controller();
    if (!side.waits() || !p_controller) {
        return;
    }
    const ControllerLocker locker(*p_controller);
    if (p_controller->state_exists()) {
        side.fill_list((p_controller->*details_of)(s_all));
    }
}

void UndoRedoPresentation::hoveredUndo(QAction* p_action)
{
    m_undo->hover(p_action->data().toULongLong());
}

void UndoRedoPresentation::hoveredUndo()
{
    fill_waiting_list(*m_undo, &UndoRedoController::getUndoCommandDetails);
    m_undo->hover(0);
}

void UndoRedoPresentation::hoveredRedo(QAction* p_action)
{
    m_redo->hover(p_action->data().toULongLong());
}

void UndoRedoPresentation::hoveredRedo()
{
    fill_waiting_list(*m_redo, &UndoRedoController::getRedoCommandDetails);
    m_redo->hover(0);
}

// --- undo and redo

void UndoRedoPresentation::undo()
{
    undos_selected(1);
}

void UndoRedoPresentation::redo()
{
    redos_selected(1);
}

void UndoRedoPresentation::undo(QAction* p_action)
{
    // A copy: the run fills the list anew.
    const size_t count = p_action->data().toULongLong();
    undos_selected(count);
}

void UndoRedoPresentation::redo(QAction* p_action)
{
    const size_t count = p_action->data().toULongLong();
    redos_selected(count);
}

void UndoRedoPresentation::undos_selected(const size_t& num_undos)
{
    run(num_undos, &UndoRedoController::undo, BOOST_CURRENT_FUNCTION);
}

void UndoRedoPresentation::redos_selected(const size_t& num_redos)
{
    run(num_redos, &UndoRedoController::redo, BOOST_CURRENT_FUNCTION);
}

void UndoRedoPresentation::run(size_t count, Steps steps, const char* function)
{
    DocumentManager& documents = DocumentManager::instance();
    if (documents.documents_busy() || documents.current_document_id() == DocumentId::null()) {
        return;
    }
    BusyMark mark(documents.current_document_id(), true);
    mark.set();
    UndoRedoController* const p_controller = controller();
    if (!HK_ASSERT_IN(p_controller, "p_controller", function)) {
        return;
    }
    ControllerLocker locker(*p_controller);
    locker.finished(); // however the steps end, some of them may have been done
    (p_controller->*steps)(count);
    mark.clear();
}

// --- messages

void UndoRedoPresentation::handle_message(MainWindowMessage& message)
{
    if (!m_undo || !m_redo) {
        return;
    }
    if (message.kind() == MainWindowMessage::Menu) {
        const auto* const p_menu = qobject_cast<QMenu*>(message.target());
        if (p_menu && (p_menu->title() == "&Edit" || p_menu->title() == tr("&Edit"))) {
            message.insertAction(0, undo_action());
            message.insertAction(1, redo_action());
            message.insertSeparator(2);
        }
    } else if (message.kind() == MainWindowMessage::EditActions) {
        if (auto* const p_window = qobject_cast<AbstractMainWindow*>(message.owner())) {
            p_window->take_undo_redo_actions(undo_action(), redo_action());
        }
    }
}

void UndoRedoPresentation::handle_message(DocumentMessage& message)
{
    if (message.doc_change_type() == DocumentMessage::Busy) {
        set_undo_redo_items(false);
    } else if (message.doc_change_type() == DocumentMessage::Idle) {
        set_undo_redo_items(true);
    }
}

} // namespace tarqa::housekeeping::gui
