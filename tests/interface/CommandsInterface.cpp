#include "interface/Interface.h"

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDocumentHistory.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/UndoRedoControllerFactory.h>

#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

#include <string>

// What the library offers for commands, the undo history and its controller.

using namespace tarqa::housekeeping;

namespace {

typedef std::string Text;
typedef unsigned long long Number;
typedef boost::shared_ptr<AbstractCommand> CommandPointer;
typedef std::vector<CommandDetails> DetailsList;

const std::size_t s_after_destructor = 2; // which has two entries

/// Whether the class that is named itself declares an operation of this type, other than one that it
/// inherits.
template <class Expected, class Declared>
constexpr bool declares(Declared)
{
    return std::is_same_v<Expected, Declared>;
}

// Details

static_assert(std::is_default_constructible_v<CommandDetails>);
static_assert(std::is_constructible_v<CommandDetails, const Text&, const Text&, const QIcon&>);
static_assert(std::is_copy_constructible_v<CommandDetails> && std::is_copy_assignable_v<CommandDetails>);
static_assert(!std::is_polymorphic_v<CommandDetails>);
static_assert(
    sizeof(CommandDetails) == 2 * sizeof(Text) + sizeof(QIcon), "a name, a description and an icon");
INTERFACE_HAS(CommandDetails::name, const Text& (CommandDetails::*)() const);
INTERFACE_HAS(CommandDetails::description, const Text& (CommandDetails::*)() const);
INTERFACE_HAS(CommandDetails::icon, const QIcon& (CommandDetails::*)() const);
INTERFACE_HAS(CommandDetails::setName, void (CommandDetails::*)(const Text&));
INTERFACE_HAS(CommandDetails::setDescription, void (CommandDetails::*)(const Text&));
INTERFACE_HAS(CommandDetails::setIcon, void (CommandDetails::*)(const QIcon&));

// Commands

/// Shows what is protected, and adds an operation after the last one.
class OpenCommand : public AbstractCommand
{
public:
    using AbstractCommand::do_command;
    using AbstractCommand::finished;
    using AbstractCommand::progress;
    using AbstractCommand::progress_text;
    using AbstractCommand::remember;
    using AbstractCommand::undo_command;

    using AbstractCommand::m_cancelled;
    using AbstractCommand::m_clear_redo_when_undoing;
    using AbstractCommand::m_set_document_busy;
    using AbstractCommand::m_stack_identical;
    using AbstractCommand::m_valid_undo;

    OpenCommand(DocumentId document_id, const Text& name)
        : AbstractCommand(document_id, name)
    { }
    virtual void next() { }
};

/// A command that gives what it must, and nothing else.
class LeastCommand : public AbstractCommand
{
public:
    LeastCommand(DocumentId document_id, const Text& name)
        : AbstractCommand(document_id, name)
    { }
    void rollback() override { }

protected:
    void remember() override { }
    void do_command() override { }
    void undo_command() override { }
};

static_assert(std::is_abstract_v<AbstractCommand>);
static_assert(std::has_virtual_destructor_v<AbstractCommand>);
static_assert(!std::is_constructible_v<AbstractCommand, DocumentId, const Text&>, "protected");
static_assert(!std::is_abstract_v<LeastCommand>, "four operations are pure");
static_assert(std::is_copy_constructible_v<LeastCommand> && std::is_copy_assignable_v<LeastCommand>);
INTERFACE_HAS(AbstractCommand::size, Number (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::rememberGeo, void (AbstractCommand::*)(Number));
INTERFACE_HAS(AbstractCommand::rollback, void (AbstractCommand::*)());
INTERFACE_HAS(AbstractCommand::stackWith, bool (AbstractCommand::*)(CommandPointer));
INTERFACE_HAS(OpenCommand::remember, void (AbstractCommand::*)());
INTERFACE_HAS(OpenCommand::do_command, void (AbstractCommand::*)());
INTERFACE_HAS(OpenCommand::undo_command, void (AbstractCommand::*)());
INTERFACE_HAS(OpenCommand::finished, void (AbstractCommand::*)(bool));
INTERFACE_HAS(AbstractCommand::name, const Text& (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::details, const CommandDetails& (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::id, const CommandId& (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::document_id, const DocumentId& (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::setName, void (AbstractCommand::*)(const Text&));
INTERFACE_HAS(AbstractCommand::setDescription, void (AbstractCommand::*)(const Text&));
INTERFACE_HAS(AbstractCommand::setIcon, void (AbstractCommand::*)(const QIcon&));
INTERFACE_HAS(AbstractCommand::appendDescription, void (AbstractCommand::*)(const Text&));
INTERFACE_HAS(AbstractCommand::empty, bool (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::validUndo, bool (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::set_document_busy, bool (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::stackIndenticalCommand, bool (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::shouldClearRedoWhenUndoing, bool (AbstractCommand::*)() const);
INTERFACE_HAS(AbstractCommand::setProgress, void (AbstractCommand::*)(pkBase::AbstractProgress*));
INTERFACE_HAS(AbstractCommand::request_cancel, void (AbstractCommand::*)());
INTERFACE_HAS(AbstractCommand::protocol, Text (AbstractCommand::*)(const char*, bool) const);
INTERFACE_HAS(AbstractCommand::execute_runnable, AbstractCommand::Execute* (AbstractCommand::*)());
INTERFACE_HAS(AbstractCommand::unexecute_runnable, AbstractCommand::UnExecute* (AbstractCommand::*)());
INTERFACE_HAS(OpenCommand::progress, void (AbstractCommand::*)(unsigned int) const);
INTERFACE_HAS(OpenCommand::progress_text, void (AbstractCommand::*)(const Text&) const);

// The members that hosts set.
static_assert(std::is_same_v<decltype(OpenCommand::m_valid_undo), bool>);
static_assert(std::is_same_v<decltype(OpenCommand::m_set_document_busy), bool>);
static_assert(std::is_same_v<decltype(OpenCommand::m_stack_identical), bool>);
static_assert(std::is_same_v<decltype(OpenCommand::m_clear_redo_when_undoing), bool>);
static_assert(std::is_convertible_v<decltype(OpenCommand::m_cancelled), bool>);
static_assert(std::is_assignable_v<decltype((OpenCommand::m_cancelled)), bool>);

// Runs

class NextRunnable : public Runnable
{
public:
    virtual void next() { }
};

static_assert(std::is_abstract_v<Runnable>);
static_assert(std::has_virtual_destructor_v<Runnable>);
INTERFACE_HAS(Runnable::run, void (Runnable::*)(bool));

template <class Run>
constexpr bool is_a_run_of_a_command()
{
    return std::is_base_of_v<Runnable,
               Run> && std::is_constructible_v<Run, AbstractCommand*> && !std::is_default_constructible_v<Run> && std::is_copy_constructible_v<Run> && std::is_copy_assignable_v<Run> && sizeof(Run) == 2 * sizeof(void*);
}

static_assert(is_a_run_of_a_command<AbstractCommand::Execute>());
static_assert(is_a_run_of_a_command<AbstractCommand::UnExecute>());
static_assert(declares<void (AbstractCommand::Execute::*)(bool)>(&AbstractCommand::Execute::run));
static_assert(declares<void (AbstractCommand::UnExecute::*)(bool)>(&AbstractCommand::UnExecute::run));

// Composites

class OpenComposite : public CompositeCommand
{
public:
    using CompositeCommand::CompositeCommand;
    using CompositeCommand::do_command;
    using CompositeCommand::finished;
    using CompositeCommand::remember;
    using CompositeCommand::undo_command;
    virtual void next() { }
};

static_assert(std::is_base_of_v<AbstractCommand, CompositeCommand>);
static_assert(!std::is_abstract_v<CompositeCommand>);
static_assert(std::is_constructible_v<CompositeCommand, const DocumentId&, const Text&, bool>);
static_assert(!std::is_constructible_v<CompositeCommand, const DocumentId&, const Text&>);
static_assert(std::is_copy_constructible_v<CompositeCommand> && std::is_copy_assignable_v<CompositeCommand>);
static_assert(std::is_same_v<CompositeCommand::Commands, std::vector<std::pair<CommandPointer, bool>>>);
static_assert(declares<Number (CompositeCommand::*)() const>(&CompositeCommand::size));
static_assert(declares<void (CompositeCommand::*)()>(&CompositeCommand::rollback));
static_assert(declares<bool (CompositeCommand::*)(CommandPointer)>(&CompositeCommand::stackWith));
static_assert(declares<void (CompositeCommand::*)()>(&OpenComposite::remember));
static_assert(declares<void (CompositeCommand::*)()>(&OpenComposite::do_command));
static_assert(declares<void (CompositeCommand::*)()>(&OpenComposite::undo_command));
static_assert(declares<void (CompositeCommand::*)(bool)>(&OpenComposite::finished));
INTERFACE_HAS(CompositeCommand::push_back, void (CompositeCommand::*)(CommandPointer));
INTERFACE_HAS(CompositeCommand::commands, const CompositeCommand::Commands& (CompositeCommand::*)() const);
INTERFACE_HAS(CompositeCommand::clear, void (CompositeCommand::*)());

// The undo history

class NextHistory : public AbstractDocumentHistory
{
public:
    virtual void next() { }
};

static_assert(std::has_virtual_destructor_v<AbstractDocumentHistory>);
static_assert(!std::is_abstract_v<AbstractDocumentHistory>);
static_assert(std::is_default_constructible_v<AbstractDocumentHistory>);
static_assert(std::is_copy_constructible_v<AbstractDocumentHistory>);
static_assert(std::is_copy_assignable_v<AbstractDocumentHistory>);
INTERFACE_HAS(
    AbstractDocumentHistory::insertUndoCommand, void (AbstractDocumentHistory::*)(const CommandPointer&));
INTERFACE_HAS(AbstractDocumentHistory::transferUndoCommand, CommandPointer (AbstractDocumentHistory::*)());
INTERFACE_HAS(AbstractDocumentHistory::transferRedoCommand, CommandPointer (AbstractDocumentHistory::*)());
INTERFACE_HAS(AbstractDocumentHistory::removeLastUndo, void (AbstractDocumentHistory::*)());
INTERFACE_HAS(AbstractDocumentHistory::getUndoCommandDetails,
    DetailsList (AbstractDocumentHistory::*)(const Number&) const);
INTERFACE_HAS(AbstractDocumentHistory::getRedoCommandDetails,
    DetailsList (AbstractDocumentHistory::*)(const Number&) const);
INTERFACE_HAS(AbstractDocumentHistory::undoSize, Number (AbstractDocumentHistory::*)() const);
INTERFACE_HAS(AbstractDocumentHistory::redoSize, Number (AbstractDocumentHistory::*)() const);
INTERFACE_HAS(AbstractDocumentHistory::empty, bool (AbstractDocumentHistory::*)() const);

// The command manager

/// Its constructor and destructor are protected, not private.
class NextManager : public CommandManager
{
public:
    NextManager() = default;
    virtual void next() { }
};

static_assert(std::has_virtual_destructor_v<CommandManager>);
static_assert(!std::is_default_constructible_v<CommandManager> && !std::is_destructible_v<CommandManager>);
static_assert(std::is_default_constructible_v<NextManager> && std::is_destructible_v<NextManager>);
static_assert(!std::is_copy_constructible_v<NextManager> && !std::is_copy_assignable_v<NextManager>);
static_assert(!std::is_base_of_v<tarqa::utilities::IdCreator, CommandManager>);
INTERFACE_HAS(CommandManager::instance, CommandManager& (*)());
INTERFACE_HAS(CommandManager::const_instance, const CommandManager& (*)());
INTERFACE_HAS(CommandManager::createId, CommandId (CommandManager::*)());
INTERFACE_HAS(CommandManager::insert, void (CommandManager::*)(CommandPointer, bool));
INTERFACE_HAS(CommandManager::undo, void (CommandManager::*)(DocumentId));
INTERFACE_HAS(CommandManager::redo, void (CommandManager::*)(DocumentId));
INTERFACE_HAS(CommandManager::finish, void (CommandManager::*)());

// The controller

static_assert(std::is_base_of_v<AbstractController, UndoRedoController>);
static_assert(std::is_default_constructible_v<UndoRedoController>);
static_assert(!std::is_copy_constructible_v<UndoRedoController>);
static_assert(declares<bool (UndoRedoController::*)() const>(&UndoRedoController::state_exists));
INTERFACE_HAS(UndoRedoController::undo, void (UndoRedoController::*)(const Number&));
INTERFACE_HAS(UndoRedoController::redo, void (UndoRedoController::*)(const Number&));
INTERFACE_HAS(UndoRedoController::undo_count, Number (UndoRedoController::*)() const);
INTERFACE_HAS(UndoRedoController::redo_count, Number (UndoRedoController::*)() const);
INTERFACE_HAS(
    UndoRedoController::getUndoCommandDetails, DetailsList (UndoRedoController::*)(const Number&) const);
INTERFACE_HAS(
    UndoRedoController::getRedoCommandDetails, DetailsList (UndoRedoController::*)(const Number&) const);

static_assert(std::is_base_of_v<AbstractState, UndoRedoController::State>);
static_assert(std::is_constructible_v<UndoRedoController::State, AbstractDocument&, DocumentId, Text>);
static_assert(!std::is_default_constructible_v<UndoRedoController::State>);
static_assert(std::is_copy_constructible_v<UndoRedoController::State>);
static_assert(sizeof(UndoRedoController::State) == sizeof(AbstractState), "no fields of its own");
INTERFACE_HAS(UndoRedoController::State::document_history,
    const AbstractDocumentHistory& (UndoRedoController::State::*)() const);

static_assert(std::is_base_of_v<AbstractControllerFactory, UndoRedoControllerFactory>);
static_assert(std::is_default_constructible_v<UndoRedoControllerFactory>);
static_assert(declares<boost::shared_ptr<AbstractController> (UndoRedoControllerFactory::*)()>(
    &UndoRedoControllerFactory::create_product));
static_assert(declares<AbstractController* (UndoRedoControllerFactory::*)()>(
    &UndoRedoControllerFactory::create_unmanaged_product));

} // namespace

TEST(AbstractCommandInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&AbstractCommand::size));
    EXPECT_TRUE(interface::in_a_row(&AbstractCommand::size, &AbstractCommand::rememberGeo,
        &AbstractCommand::rollback, &AbstractCommand::stackWith, &OpenCommand::remember,
        &OpenCommand::do_command, &OpenCommand::undo_command, &OpenCommand::finished, &OpenCommand::next));
}

TEST(RunnableInterface, RunStandsBeforeTheDestructor)
{
    EXPECT_EQ(0u, interface::slot_of(&Runnable::run));
    EXPECT_EQ(1 + s_after_destructor, interface::slot_of(&NextRunnable::next));
}

TEST(CompositeCommandInterface, AddsNoVirtualOperation)
{
    EXPECT_TRUE(interface::in_a_row(&OpenComposite::finished, &OpenComposite::next));
}

TEST(AbstractDocumentHistoryInterface, DestructorIsTheOnlyVirtualOperation)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&NextHistory::next));
}

TEST(CommandManagerInterface, DestructorIsTheOnlyVirtualOperation)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&NextManager::next));
}

TEST(UndoRedoControllerInterface, SlotIsKnownByItsSignature)
{
    const QMetaObject& meta_object = UndoRedoController::staticMetaObject;
    const int slot = meta_object.indexOfSlot("handle_message(housekeeping::DocumentHistoryMsg&)");
    ASSERT_NE(-1, slot);
    EXPECT_EQ(QMetaMethod::Private, meta_object.method(slot).access());
    EXPECT_STREQ("tarqa::housekeeping::UndoRedoController", meta_object.className());
}
