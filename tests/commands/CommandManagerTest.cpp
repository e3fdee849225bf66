#include "commands/FatalErrorProbe.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/Phases.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <pkBase/pkDestructor.h>

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using namespace tarqa::housekeeping;
using support::FakeCommand;
using support::FakeDocument;
using support::FakeProgress;
using support::journal;
using support::JournalingReceiver;
using support::make_command;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

CommandManager& manager()
{
    return CommandManager::instance();
}

DocumentManager& documents()
{
    return DocumentManager::instance();
}

/// A document and a receiver, with an empty journal.
class OneDocument
{
public:
    OneDocument()
        : document(support::create_document())
        , id(document.id())
    {
        journal().clear();
    }

    boost::shared_ptr<FakeCommand> command(const std::string& name) const { return make_command(id, name); }
    AbstractDocumentHistory& history() { return document.document_history(); }

    FakeDocument& document;
    const DocumentId id;
    JournalingReceiver receiver;
};

unsigned int failure_of(const std::function<void()>& action)
{
    try {
        action();
    } catch (HousekeepingException& exception) {
        return exception.code();
    }
    return 0;
}

} // namespace

TEST(CommandManager, IsOneObject)
{
    EXPECT_EQ(&CommandManager::instance(), &CommandManager::instance());
    EXPECT_EQ(&CommandManager::instance(), &CommandManager::const_instance());
}

TEST(CommandManager, IdsStartAtOneIndependentlyOfDocuments)
{
    documents().createId();
    documents().createId();
    EXPECT_EQ(CommandId::build(1), manager().createId());
    EXPECT_EQ(CommandId::build(2), manager().createId());
    EXPECT_EQ(DocumentId::build(3), documents().createId());
    EXPECT_EQ(CommandId::build(3), FakeCommand(DocumentId::build(1), "Rotate").id());
}

TEST(CommandManager, IsMadeByTheFirstCommand)
{
    EXPECT_FALSE(TestAccess::peek<CommandManager>());
    const FakeCommand command(DocumentId::build(1), "Rotate");
    EXPECT_TRUE(TestAccess::peek<CommandManager>());
    EXPECT_EQ(CommandId::build(1), command.id());
}

TEST(CommandManager, IsMadeByTheConstAccessorToo)
{
    const CommandManager& made = CommandManager::const_instance();
    EXPECT_EQ(&made, TestAccess::peek<CommandManager>());
}

TEST(CommandManager, OrderedDestructionTakesIt)
{
    manager();
    EXPECT_TRUE(TestAccess::peek<CommandManager>());
    pkBase::pkDestructor::run();
    EXPECT_FALSE(TestAccess::peek<CommandManager>());
}

TEST(CommandManager, GoesInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<CommandManager>());
}

TEST(CommandManager, IsMadeAgainAfterItsDestruction)
{
    OneDocument it;
    manager().finish();
    TestAccess::destroy<CommandManager>();
    EXPECT_FALSE(TestAccess::peek<CommandManager>());
    manager().insert(it.command("Rotate"), false);
    EXPECT_EQ(1, journal().count("Rotate.do")); // the new one is not finished
}

// Insert

TEST(CommandManager, InsertHasAFixedOrder)
{
    FakeProgress sink;
    OneDocument it;
    const auto command = it.command("Rotate");
    command->setProgress(&sink);
    support::LogCapture log;
    manager().insert(command, false);
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.busy(true)", "Busy(Document 1)", "DocumentHistoryMsg",
            "Document 1.modified(true)", "progress.open(0)", "Rotate.remember", "Rotate.do",
            "Rotate.finished(true)", "progress.close", "CommandMessage(Rotate, 0)", "Idle(Document 1)",
            "Document 1.busy(false)"));
    EXPECT_EQ("DO>\tRotate - Succeeded.\n", log.text());
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_EQ(0u, it.history().redoSize());
    EXPECT_FALSE(documents().documents_busy());
}

TEST(CommandManager, SecondArgumentOfInsertIsIgnored)
{
    OneDocument it;
    manager().insert(it.command("A"), true);
    const std::vector<std::string> with_true = journal().entries();
    journal().clear();
    manager().insert(it.command("A"), false);
    EXPECT_EQ(with_true, journal().entries());
}

TEST(CommandManager, CommandIsInTheHistoryBeforeItRuns)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    unsigned long long size = 0;
    command->on_remember = [&] { size = it.history().undoSize(); };
    manager().insert(command, false);
    EXPECT_EQ(1u, size);
}

TEST(CommandManager, DocumentIsBusyDuringTheRun)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    bool busy = false;
    command->on_do = [&] { busy = it.document.is_busy() && documents().document_busy(it.id); };
    manager().insert(command, false);
    EXPECT_TRUE(busy);
    EXPECT_FALSE(it.document.is_busy());
}

TEST(CommandManager, ProtocolIsWrittenBeforeTheDocumentBecomesIdle)
{
    OneDocument it;
    support::LogCapture log;
    std::vector<std::string> texts;
    it.receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Idle) {
            texts.push_back(log.text());
        }
    };
    const std::string done = "DO>\tRotate - Succeeded.\n";
    const std::string undone = "UNDO>\tRotate - Succeeded.\n";
    manager().insert(it.command("Rotate"), false);
    manager().undo(it.id);
    manager().redo(it.id);
    EXPECT_THAT(texts, ElementsAre(done, done + undone, done + undone + done));
}

TEST(CommandManager, CancelledCommandStaysInTheHistory)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    command->on_do = support::throws_cancel();
    manager().insert(command, false);
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_EQ(1, journal().count("Rotate.rollback"));
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 3)"));
    EXPECT_EQ(1, journal().count("Idle"));
}

TEST(CommandManager, FailedCommandStaysInTheHistory)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    command->on_do = support::throws_failure("no room");
    support::LogCapture log;
    manager().insert(command, false);
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_EQ(1, journal().count("Idle"));
    log.take_all();
}

TEST(CommandManager, CommandWithoutUndoRunsAndIsNotKept)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    command->valid_undo(false);
    manager().insert(command, false);
    EXPECT_TRUE(it.history().empty());
    EXPECT_EQ(1, journal().count("Rotate.do"));
    EXPECT_EQ(1, journal().count("DocumentHistoryMsg"));
}

TEST(CommandManager, AbsorbedCommandStillRuns)
{
    OneDocument it;
    const auto older = it.command("A");
    older->stack_identical(true);
    older->absorbs = [](const AbstractCommand&) { return true; };
    const auto newer = it.command("B");
    newer->stack_identical(true);
    manager().insert(older, false);
    journal().clear();
    manager().insert(newer, false);
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.busy(true)", "Busy(Document 1)", "A.stackWith(B)", "DocumentHistoryMsg",
            "Document 1.modified(true)", "B.remember", "B.do", "B.finished(true)", "CommandMessage(B, 0)",
            "Idle(Document 1)", "Document 1.busy(false)"));
}

TEST(CommandManager, EmptyCommandIsLoggedAndRuns)
{
    OneDocument it;
    support::LogCapture log;
    manager().insert(boost::make_shared<CompositeCommand>(it.id, "Batch", false), false);
    EXPECT_TRUE(
        log.took_assert("!sp_command->empty()", "CommandManager::insert", "housekeeping/src/CommandManager"));
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 0)"));
}

TEST(CommandManager, NullCommandIsLoggedAndIgnored)
{
    OneDocument it;
    support::LogCapture log;
    manager().insert(nullptr, false);
    EXPECT_TRUE(log.took_assert("!utilities::null_pointer( sp_command )", "CommandManager::insert(",
        "housekeeping/src/CommandManager"));
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_THAT(journal().entries(), IsEmpty());
    manager().insert(it.command("Rotate"), false); // and the mutex is free
    EXPECT_EQ(1, journal().count("Rotate.do"));
}

TEST(CommandManager, CompositeIsOneCommand)
{
    OneDocument it;
    const auto composite = boost::make_shared<CompositeCommand>(it.id, "Batch", false);
    composite->push_back(it.command("A"));
    composite->push_back(it.command("B"));
    manager().insert(composite, false);
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_EQ(1, journal().count("Busy"));
    EXPECT_EQ(1, journal().count("DocumentHistoryMsg"));
    EXPECT_EQ(1, journal().count("CommandMessage"));
    EXPECT_EQ(1, journal().count("Document 1.modified"));
}

// Busy marks

TEST(CommandManager, RunOnABusyDocumentLeavesItsMark)
{
    const support::App app;
    const support::DialogDriver dialogs; // fails the test if a warning appears
    OneDocument it;
    documents().document_busy(it.id, true);
    journal().clear();
    support::LogCapture log;
    manager().insert(it.command("Rotate"), false);
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_EQ(1, journal().count("Rotate.do"));
    manager().undo(it.id);
    manager().redo(it.id);
    EXPECT_EQ(0, journal().count("Busy"));
    EXPECT_EQ(0, journal().count("Idle"));
    EXPECT_TRUE(documents().document_busy(it.id));
    EXPECT_TRUE(it.document.is_busy());
    EXPECT_EQ("DO>\tRotate - Succeeded.\nUNDO>\tRotate - Succeeded.\nDO>\tRotate - Succeeded.\n", log.text());
    documents().document_busy(it.id, false); // there was exactly one
    EXPECT_FALSE(documents().documents_busy());
}

TEST(CommandManager, CommandThatSetsNoMarkRunsOnABusyDocument)
{
    const support::App app;
    const support::DialogDriver dialogs;
    OneDocument it;
    documents().document_busy(it.id, true);
    const auto command = it.command("Rotate");
    command->sets_document_busy(false);
    journal().clear();
    manager().insert(command, false);
    manager().undo(it.id);
    manager().redo(it.id);
    EXPECT_EQ(2, journal().count("Rotate.do"));
    EXPECT_EQ(0, journal().count("Busy"));
    EXPECT_EQ(0, journal().count("Idle"));
    EXPECT_TRUE(documents().document_busy(it.id));
    documents().document_busy(it.id, false);
    EXPECT_FALSE(documents().documents_busy());
}

TEST(CommandManager, CommandThatSetsNoMarkLeavesAnIdleDocumentIdle)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    command->sets_document_busy(false);
    command->on_do = [&it] { EXPECT_FALSE(it.document.is_busy()); };
    manager().insert(command, false);
    EXPECT_EQ(0, journal().count("Busy"));
    EXPECT_EQ(0, journal().count("Idle"));
    EXPECT_EQ(0, journal().count("Document 1.busy"));
}

TEST(CommandManager, BusyMarksPairUpWhenARunThrows)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    command->on_finished = support::throws_std("finished");
    EXPECT_THROW(manager().insert(command, false), std::runtime_error);
    EXPECT_FALSE(documents().documents_busy());
    EXPECT_FALSE(it.document.is_busy());
    EXPECT_EQ(1, journal().count("Idle"));
    EXPECT_THROW(manager().undo(it.id), std::runtime_error);
    EXPECT_FALSE(documents().documents_busy());
    EXPECT_THROW(manager().redo(it.id), std::runtime_error);
    EXPECT_FALSE(documents().documents_busy());
    EXPECT_EQ(3, journal().count("Busy"));
    EXPECT_EQ(3, journal().count("Idle"));
    manager().insert(it.command("Move"), false); // and the mutex is free
    EXPECT_EQ(1, journal().count("Move.do"));
}

TEST(CommandManager, BusyMarksPairUpWhenASubscriberThrows)
{
    OneDocument it;
    it.receiver.on_history = [](DocumentHistoryMsg&) { throw std::runtime_error("subscriber"); };
    EXPECT_THROW(manager().insert(it.command("Rotate"), false), std::runtime_error);
    EXPECT_EQ(0, journal().count("Rotate.do"));
    EXPECT_FALSE(documents().documents_busy());
    it.receiver.on_history = nullptr;
    manager().insert(it.command("Move"), false);
    EXPECT_EQ(1, journal().count("Move.do"));
}

TEST(CommandManager, UnknownDocumentThrowsAndLeavesNoMark)
{
    const DocumentId unknown = DocumentId::build(77);
    const JournalingReceiver receiver;
    support::LogCapture log;
    EXPECT_EQ(1014u, failure_of([&] { manager().insert(make_command(unknown, "A"), false); }));
    EXPECT_EQ(1014u, failure_of([&] { manager().undo(unknown); }));
    EXPECT_EQ(1014u, failure_of([&] { manager().redo(unknown); }));
    log.take_all();
    EXPECT_FALSE(documents().documents_busy());
    EXPECT_THAT(journal().entries(), IsEmpty());

    const auto without_mark = make_command(unknown, "B");
    without_mark->sets_document_busy(false);
    EXPECT_EQ(1014u, failure_of([&] { manager().insert(without_mark, false); }));
    OneDocument it;
    manager().insert(it.command("C"), false);
    EXPECT_EQ(1, journal().count("C.do"));
}

// Undo and redo

TEST(CommandManager, UndoHasAFixedOrder)
{
    OneDocument it;
    manager().insert(it.command("Rotate"), false);
    journal().clear();
    support::LogCapture log;
    manager().undo(it.id);
    EXPECT_THAT(journal().entries(),
        ElementsAre("DocumentHistoryMsg", "Document 1.busy(true)", "Busy(Document 1)", "Rotate.undo",
            "Rotate.finished(true)", "CommandMessage(Rotate, 1)", "Idle(Document 1)",
            "Document 1.busy(false)"));
    EXPECT_EQ("UNDO>\tRotate - Succeeded.\n", log.text());
    EXPECT_EQ(0u, it.history().undoSize());
    EXPECT_EQ(1u, it.history().redoSize());
}

TEST(CommandManager, RedoHasAFixedOrderAndSaysRedo)
{
    OneDocument it;
    manager().insert(it.command("Rotate"), false);
    manager().undo(it.id);
    journal().clear();
    support::LogCapture log;
    manager().redo(it.id);
    EXPECT_THAT(journal().entries(),
        ElementsAre("DocumentHistoryMsg", "Document 1.busy(true)", "Busy(Document 1)",
            "Document 1.modified(true)", "Rotate.remember", "Rotate.do", "Rotate.finished(true)",
            "CommandMessage(Rotate, 0, redo)", "Idle(Document 1)", "Document 1.busy(false)"));
    EXPECT_EQ("DO>\tRotate - Succeeded.\n", log.text());
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_EQ(0u, it.history().redoSize());
}

TEST(CommandManager, UndoAndRedoOfAnEmptyStackDoNothing)
{
    const support::App app;
    const support::DialogDriver dialogs;
    OneDocument it;
    manager().undo(it.id);
    manager().redo(it.id);
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_FALSE(documents().documents_busy());
}

TEST(CommandManager, UndoAndRedoTakeTheLastCommandOfTheirDocument)
{
    OneDocument it;
    const FakeDocument& other = support::create_document();
    manager().insert(it.command("A"), false);
    manager().insert(it.command("B"), false);
    manager().insert(make_command(other.id(), "C"), false);
    journal().clear();
    manager().undo(it.id);
    EXPECT_EQ(1, journal().count("B.undo"));
    manager().undo(it.id);
    EXPECT_EQ(1, journal().count("A.undo"));
    manager().redo(it.id);
    EXPECT_EQ(1, journal().count("A.do"));
    EXPECT_EQ(0, journal().count("C."));
    EXPECT_EQ(1u, other.document_history().undoSize());
}

TEST(CommandManager, FailingUndoStaysOnTheRedoStack)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    manager().insert(command, false);
    command->on_undo = support::throws_std("boom");
    support::LogCapture log;
    const support::FatalErrorProbe probe;
    manager().undo(it.id);
    EXPECT_EQ(1, support::FatalErrorProbe::exits());
    EXPECT_EQ(0u, it.history().undoSize());
    EXPECT_EQ(1u, it.history().redoSize());
    EXPECT_FALSE(documents().documents_busy());
    log.take_all();
}

TEST(CommandManager, CancelledRedoStaysOnTheUndoStack)
{
    OneDocument it;
    const auto command = it.command("Rotate");
    manager().insert(command, false);
    manager().undo(it.id);
    command->on_do = support::throws_cancel();
    manager().redo(it.id);
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 3, redo)"));
    EXPECT_EQ(1u, it.history().undoSize());
    EXPECT_EQ(0u, it.history().redoSize());
}

TEST(CommandManager, CommandThatLeavesTheHistoryLivesThroughItsUndo)
{
    OneDocument it;
    boost::shared_ptr<FakeCommand> command = it.command("Rotate");
    command->clears_redo_when_undoing(true);
    const boost::weak_ptr<FakeCommand> watched = command;
    manager().insert(command, false);
    command.reset();
    bool alive = false;
    it.receiver.on_command = [&](CommandMessage&) { alive = !watched.expired(); };
    manager().undo(it.id);
    EXPECT_TRUE(alive);
    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(it.history().empty());
    EXPECT_EQ(1, journal().count("Rotate.undo"));
}

TEST(CommandManager, CommandThatIsNotKeptLivesThroughItsRun)
{
    OneDocument it;
    boost::shared_ptr<FakeCommand> command = it.command("Rotate");
    command->valid_undo(false);
    const boost::weak_ptr<FakeCommand> watched = command;
    bool alive = false;
    it.receiver.on_command = [&](CommandMessage&) { alive = !watched.expired(); };
    manager().insert(std::move(command), false);
    EXPECT_TRUE(alive);
    EXPECT_TRUE(watched.expired());
}

// After finish()

TEST(CommandManager, FinishedManagerInsertsNothing)
{
    const support::App app;
    const support::DialogDriver dialogs;
    OneDocument it;
    manager().finish();
    support::LogCapture log;
    manager().insert(it.command("Rotate"), false);
    EXPECT_TRUE(it.history().empty());
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_EQ("", log.text());
    manager().insert(it.command("Move"), false); // and the mutex is free
}

TEST(CommandManager, FinishedManagerStillUndoesAndRedoes)
{
    OneDocument it;
    manager().insert(it.command("Rotate"), false);
    manager().finish();
    manager().undo(it.id);
    EXPECT_EQ(1, journal().count("Rotate.undo"));
    manager().redo(it.id);
    EXPECT_EQ(2, journal().count("Rotate.do"));
}

TEST(CommandManager, FinishedManagerStillLogsAnEmptyCommand)
{
    OneDocument it;
    manager().finish();
    support::LogCapture log;
    manager().insert(boost::make_shared<CompositeCommand>(it.id, "Batch", false), false);
    EXPECT_TRUE(
        log.took_assert("!sp_command->empty()", "CommandManager::insert", "housekeeping/src/CommandManager"));
    EXPECT_TRUE(it.history().empty());
}
