#include "support/App.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/UndoRedoControllerFactory.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QThread>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

using namespace tarqa::housekeeping;
using support::FakeCommand;
using support::FakeDocument;
using support::FakeView;
using support::journal;
using support::JournalingReceiver;
using support::make_command;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string s_name = "UndoRedoController";
const char* const s_source = "housekeeping/src/UndoRedoController";
const unsigned long long s_all = std::numeric_limits<unsigned long long>::max();

/// The library's own controller, which serves the current document.
UndoRedoController& controller()
{
    return dynamic_cast<UndoRedoController&>(*ControllerManager::instance().controller(s_name));
}

boost::shared_ptr<FakeCommand> run(const FakeDocument& document, const std::string& name)
{
    const boost::shared_ptr<FakeCommand> command = make_command(document.id(), name);
    CommandManager::instance().insert(command, false);
    return command;
}

std::vector<std::string> names(const std::vector<CommandDetails>& details)
{
    std::vector<std::string> names;
    for (const CommandDetails& entry : details) {
        names.push_back(entry.name());
    }
    return names;
}

int updates()
{
    return journal().count("view.update");
}

/// A document with the commands A, B and C, the controller that serves it, and a view of the controller.
class UndoRedo : public testing::Test
{
protected:
    UndoRedo()
    {
        a = run(document, "A");
        b = run(document, "B");
        c = run(document, "C");
        view.register_controller(&controller());
        journal().clear();
    }

    FakeDocument& document = support::create_document();
    FakeView view{"view"};
    boost::shared_ptr<FakeCommand> a;
    boost::shared_ptr<FakeCommand> b;
    boost::shared_ptr<FakeCommand> c;
};

/// A controller that nobody gave a state yet.
class UndoRedoWithoutState : public testing::Test
{
protected:
    UndoRedoWithoutState() { own.controller_name("own"); }

    UndoRedoController own;
    support::LogCapture log;
};

} // namespace

// The product

TEST(UndoRedoController, IsRegisteredAndMadeWithTheOthers)
{
    const std::vector<std::string> products = AbstractControllerFactory::products();
    EXPECT_EQ(1, std::count(products.begin(), products.end(), s_name));
    ControllerManager::instance().init();
    EXPECT_EQ(s_name, controller().controller_name());
    EXPECT_FALSE(controller().state_exists());
}

TEST(UndoRedoController, IsNotTheDefaultProduct)
{
    EXPECT_THROW(AbstractControllerFactory::create("unknown"), std::runtime_error);
}

TEST(UndoRedoController, EveryProductIsANewOne)
{
    EXPECT_NE(AbstractControllerFactory::create(s_name), AbstractControllerFactory::create(s_name));
}

TEST(UndoRedoController, ProductFollowsTheHistories)
{
    const boost::shared_ptr<AbstractController> product = AbstractControllerFactory::create(s_name);
    ASSERT_TRUE(boost::dynamic_pointer_cast<UndoRedoController>(product));
    FakeView view("view");
    view.register_controller(product.get());
    DocumentHistoryMsg().dispatch();
    EXPECT_EQ(1, updates());
}

TEST(UndoRedoController, UnmanagedProductIsTheCallersAndFollowsToo)
{
    std::unique_ptr<AbstractController> product(AbstractControllerFactory::create_unmanaged(s_name));
    ASSERT_TRUE(dynamic_cast<UndoRedoController*>(product.get()));
    FakeView view("view");
    view.register_controller(product.get());
    DocumentHistoryMsg().dispatch();
    EXPECT_EQ(1, updates());
    product.reset();
    DocumentHistoryMsg().dispatch(); // nobody is left
    EXPECT_EQ(1, updates());
}

TEST(UndoRedoController, TakesHistoryMessagesInAPrivateSlot)
{
    const QMetaObject& meta = UndoRedoController::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::UndoRedoController", meta.className());
    EXPECT_EQ(&AbstractController::staticMetaObject, meta.superClass());
    const int slot = meta.indexOfSlot("handle_message(housekeeping::DocumentHistoryMsg&)");
    ASSERT_NE(-1, slot);
    EXPECT_EQ(QMetaMethod::Private, meta.method(slot).access());
}

TEST(UndoRedoController, NumbersAre64BitReferences)
{
    typedef void (UndoRedoController::*Steps)(const unsigned long long&);
    typedef std::vector<CommandDetails> (UndoRedoController::*Details)(const unsigned long long&) const;
    EXPECT_TRUE((std::is_same_v<Steps, decltype(&UndoRedoController::undo)>));
    EXPECT_TRUE((std::is_same_v<Steps, decltype(&UndoRedoController::redo)>));
    EXPECT_TRUE((std::is_same_v<Details, decltype(&UndoRedoController::getUndoCommandDetails)>));
    EXPECT_TRUE((std::is_same_v<Details, decltype(&UndoRedoController::getRedoCommandDetails)>));
}

// Without a state

TEST_F(UndoRedoWithoutState, NothingExistsAndHistoriesAreFollowed)
{
    EXPECT_FALSE(own.state_exists());
    EXPECT_TRUE(TestAccess::follows_history(own));
}

TEST_F(UndoRedoWithoutState, UndoIsLogged)
{
    own.undo(2);
    own.undo(0);
    for (int call = 0; call < 2; ++call) {
        EXPECT_TRUE(log.took_assert(
            "!utilities::null_pointer(m_sp_undo_redo_state)", "UndoRedoController::undo(", s_source));
    }
    EXPECT_TRUE(TestAccess::follows_history(own));
}

TEST_F(UndoRedoWithoutState, RedoIsLogged)
{
    own.redo(2);
    EXPECT_TRUE(log.took_assert(
        "!utilities::null_pointer(m_sp_undo_redo_state)", "UndoRedoController::redo(", s_source));
    EXPECT_TRUE(TestAccess::follows_history(own));
}

TEST_F(UndoRedoWithoutState, DetailsAreLoggedAndEmpty)
{
    EXPECT_THAT(own.getUndoCommandDetails(5), IsEmpty());
    EXPECT_TRUE(log.took_assert("utilities::valid_pointer(m_sp_undo_redo_state)",
        "UndoRedoController::getUndoCommandDetails(", s_source));
    EXPECT_THAT(own.getRedoCommandDetails(5), IsEmpty());
    EXPECT_TRUE(log.took_assert("utilities::valid_pointer(m_sp_undo_redo_state)",
        "UndoRedoController::getRedoCommandDetails(", s_source));
}

TEST_F(UndoRedoWithoutState, CountsAreLoggedAndZero)
{
    EXPECT_EQ(0u, own.undo_count());
    EXPECT_TRUE(log.took_assert(
        "utilities::valid_pointer(m_sp_undo_redo_state)", "UndoRedoController::undo_count(", s_source));
    EXPECT_EQ(0u, own.redo_count());
    EXPECT_TRUE(log.took_assert(
        "utilities::valid_pointer(m_sp_undo_redo_state)", "UndoRedoController::redo_count(", s_source));
}

// The state

TEST_F(UndoRedoWithoutState, CreatedStateIsKeptWithoutARefresh)
{
    FakeDocument& document = support::create_document();
    run(document, "A");
    FakeView view("view");
    view.register_controller(&own);
    const boost::shared_ptr<AbstractState> state = own.create_associated_state(document);
    const auto own_state = boost::dynamic_pointer_cast<UndoRedoController::State>(state);
    ASSERT_TRUE(own_state);
    EXPECT_EQ(&document, &own_state->owner());
    EXPECT_EQ(document.id(), own_state->document_id());
    EXPECT_EQ("own", own_state->controller_name());
    EXPECT_EQ(&document.document_history(), &own_state->document_history());
    EXPECT_EQ(0, updates());
    EXPECT_THAT(names(own.getUndoCommandDetails(5)), ElementsAre("A"));
    EXPECT_FALSE(own.state_exists()); // nobody switched to it
}

TEST_F(UndoRedoWithoutState, EveryCreatedStateIsANewOne)
{
    FakeDocument& document = support::create_document();
    EXPECT_NE(own.create_associated_state(document), own.create_associated_state(document));
}

TEST_F(UndoRedoWithoutState, SwitchingToAStateRefreshesOnce)
{
    FakeDocument& document = support::create_document();
    run(document, "A");
    FakeView view("view");
    view.register_controller(&own);
    const auto state = boost::make_shared<UndoRedoController::State>(document, document.id(), "own");
    view.on_update = [&] {
        EXPECT_TRUE(own.is_locked());
        EXPECT_TRUE(own.state_exists()); // the view sees the new state
        EXPECT_THAT(names(own.getUndoCommandDetails(5)), ElementsAre("A"));
    };
    own.update_associated_state(state);
    EXPECT_EQ(1, updates());
    EXPECT_EQ(2, state.use_count());
}

TEST_F(UndoRedoWithoutState, SwitchingToNoStateRefreshesAndLetsGo)
{
    FakeDocument& document = support::create_document();
    const boost::shared_ptr<AbstractState> state = own.create_associated_state(document);
    own.update_associated_state(state);
    FakeView view("view");
    view.register_controller(&own);
    own.update_associated_state({});
    EXPECT_EQ(1, updates());
    EXPECT_FALSE(own.state_exists());
    EXPECT_EQ(1, state.use_count());
}

TEST_F(UndoRedoWithoutState, StateExistsWhileSomebodyElseHoldsIt)
{
    FakeDocument& document = support::create_document();
    boost::shared_ptr<AbstractState> state = own.create_associated_state(document);
    own.update_associated_state(state);
    EXPECT_TRUE(own.state_exists());
    boost::shared_ptr<AbstractState> another = state;
    state.reset();
    EXPECT_TRUE(own.state_exists());
    another.reset();
    EXPECT_FALSE(own.state_exists()); // though the controller still holds it
    EXPECT_THAT(own.getUndoCommandDetails(1), IsEmpty()); // without an assertion
}

TEST_F(UndoRedoWithoutState, SetStateDoesNotExistWhenTheBaseSaysNo)
{
    FakeDocument& document = support::create_document();
    own.update_associated_state({});
    const boost::shared_ptr<AbstractState> state = own.create_associated_state(document);
    EXPECT_EQ(2, state.use_count());
    EXPECT_FALSE(own.state_exists());
}

TEST_F(UndoRedoWithoutState, StateOfAnotherControllerIsNone)
{
    FakeDocument& document = support::create_document();
    FakeView view("view");
    view.register_controller(&own);
    const auto state = boost::make_shared<AbstractState>(document, document.id(), "other");
    own.update_associated_state(state);
    EXPECT_FALSE(own.state_exists());
    EXPECT_EQ(1, state.use_count());
    EXPECT_EQ(1, updates());
}

TEST_F(UndoRedo, StateFollowsTheCurrentDocument)
{
    EXPECT_TRUE(controller().state_exists());
    const boost::shared_ptr<AbstractState> state = document.state(s_name);
    ASSERT_TRUE(boost::dynamic_pointer_cast<UndoRedoController::State>(state));
    EXPECT_EQ(s_name, state->controller_name());
    EXPECT_EQ(3, state.use_count()); // the document, the controller and this test
    FakeDocument& other = support::create_document();
    EXPECT_EQ(2, state.use_count());
    EXPECT_THAT(controller().getUndoCommandDetails(s_all), IsEmpty());
    run(other, "X");
    EXPECT_THAT(names(controller().getUndoCommandDetails(s_all)), ElementsAre("X"));
    DocumentManager::instance().current_document(document.id());
    EXPECT_THAT(names(controller().getUndoCommandDetails(s_all)), ElementsAre("C", "B", "A"));
}

TEST_F(UndoRedo, StateIsGoneWithTheLastDocument)
{
    view.on_update = [] { EXPECT_FALSE(controller().state_exists()); };
    DocumentManager::instance().destroy_document(document.id(), true, false, false, DocumentId::null());
    EXPECT_FALSE(controller().state_exists());
    EXPECT_EQ(1, updates());
}

TEST_F(UndoRedo, CopiedStateServesTheSameDocument)
{
    const auto state = boost::dynamic_pointer_cast<UndoRedoController::State>(document.state(s_name));
    ASSERT_TRUE(state);
    const UndoRedoController::State copy(*state);
    EXPECT_EQ(&document, &copy.owner());
    EXPECT_EQ(document.id(), copy.document_id());
    EXPECT_EQ(s_name, copy.controller_name());
    EXPECT_EQ(&document.document_history(), &copy.document_history());
}

// Undo and redo

TEST_F(UndoRedo, UndoesAsManyStepsAsAsked)
{
    controller().undo(2);
    EXPECT_EQ(1, journal().count("C.undo"));
    EXPECT_EQ(1, journal().count("B.undo"));
    EXPECT_EQ(0, journal().count("A."));
    EXPECT_EQ(1u, document.document_history().undoSize());
    EXPECT_EQ(2u, document.document_history().redoSize());
}

TEST_F(UndoRedo, UndoStopsAtTheEmptyStack)
{
    controller().undo(1);
    journal().clear();
    controller().undo(3);
    EXPECT_EQ(1, journal().count("B.undo"));
    EXPECT_EQ(1, journal().count("A.undo"));
    EXPECT_EQ(0u, document.document_history().undoSize());
    EXPECT_EQ(3u, document.document_history().redoSize());
    EXPECT_TRUE(TestAccess::follows_history(controller()));
}

TEST_F(UndoRedo, RedoesAsManyStepsAsAsked)
{
    controller().undo(3);
    journal().clear();
    controller().redo(2);
    EXPECT_EQ(1, journal().count("A.do"));
    EXPECT_EQ(1, journal().count("B.do"));
    EXPECT_EQ(0, journal().count("C."));
    controller().redo(5);
    EXPECT_EQ(1, journal().count("C.do"));
    EXPECT_EQ(3u, document.document_history().undoSize());
    EXPECT_TRUE(TestAccess::follows_history(controller()));
}

TEST_F(UndoRedo, ZeroStepsRunNothing)
{
    const JournalingReceiver receiver;
    controller().undo(0);
    controller().redo(0);
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_TRUE(TestAccess::follows_history(controller()));
    EXPECT_EQ(3u, document.document_history().undoSize());
}

TEST_F(UndoRedo, EveryStepIsAFullRun)
{
    const JournalingReceiver receiver;
    controller().undo(2);
    controller().redo(1);
    EXPECT_THAT(journal().entries(),
        ElementsAre("DocumentHistoryMsg", "Document 1.busy(true)", "Busy(Document 1)", "C.undo",
            "C.finished(true)", "CommandMessage(C, 1)", "Idle(Document 1)", "Document 1.busy(false)",
            "DocumentHistoryMsg", "Document 1.busy(true)", "Busy(Document 1)", "B.undo", "B.finished(true)",
            "CommandMessage(B, 1)", "Idle(Document 1)", "Document 1.busy(false)", //
            "DocumentHistoryMsg", "Document 1.busy(true)", "Busy(Document 1)", "Document 1.modified(true)",
            "B.remember", "B.do", "B.finished(true)", "CommandMessage(B, 0, redo)", "Idle(Document 1)",
            "Document 1.busy(false)"));
}

TEST_F(UndoRedo, WorksOnTheDocumentOfItsState)
{
    FakeDocument& other = support::create_document();
    run(other, "X");
    controller().undo(5);
    EXPECT_EQ(0u, other.document_history().undoSize());
    EXPECT_EQ(3u, document.document_history().undoSize());
    DocumentManager::instance().current_document(document.id());
    controller().undo(1);
    EXPECT_EQ(2u, document.document_history().undoSize());
    EXPECT_EQ(1u, other.document_history().redoSize());
}

TEST_F(UndoRedo, EveryStepTakesWhatIsThereByThen)
{
    JournalingReceiver receiver;
    receiver.on_command = [this](CommandMessage& message) {
        if (message.command() == a.get()) {
            document.document_history().insertUndoCommand(make_command(document.id(), "D"));
        }
    };
    controller().undo(4);
    EXPECT_EQ(1, journal().count("D.undo"));
    EXPECT_EQ(0u, document.document_history().undoSize());
}

TEST_F(UndoRedoWithoutState, DocumentThatIsGoneIsNotUndone)
{
    FakeDocument& document = support::create_document();
    const DocumentId id = document.id();
    run(document, "A");
    run(document, "B");
    CommandManager::instance().undo(id);
    own.create_associated_state(document);
    DocumentManager::instance().destroy_document(id, true, false, false, DocumentId::null());
    journal().clear();
    own.undo(0);
    own.redo(0);
    for (const auto& steps : {&UndoRedoController::undo, &UndoRedoController::redo}) {
        try {
            (own.*steps)(1);
            FAIL() << "nothing was thrown";
        } catch (HousekeepingException& exception) {
            EXPECT_EQ(1014u, exception.code());
        }
        EXPECT_TRUE(TestAccess::follows_history(own));
    }
    EXPECT_THAT(journal().entries(), IsEmpty());
    log.take_all();
}

// Refreshes

TEST_F(UndoRedo, NothingIsRefreshedDuringOrAfterSeveralSteps)
{
    const auto ignored = [] { EXPECT_FALSE(TestAccess::follows_history(controller())); };
    b->on_undo = ignored;
    c->on_undo = ignored;
    b->on_do = ignored;
    c->on_do = ignored;
    controller().undo(2);
    EXPECT_TRUE(TestAccess::follows_history(controller()));
    controller().redo(2);
    EXPECT_TRUE(TestAccess::follows_history(controller()));
    EXPECT_EQ(1, journal().count("B.undo"));
    EXPECT_EQ(1, journal().count("B.do"));
    EXPECT_EQ(0, updates());
}

TEST_F(UndoRedo, EveryChangeOfTheHistoryByOthersRefreshesOnce)
{
    view.on_update = [] { EXPECT_TRUE(controller().is_locked()); };
    run(document, "D");
    EXPECT_EQ(1, updates());
    CommandManager::instance().undo(document.id());
    EXPECT_EQ(2, updates());
    CommandManager::instance().redo(document.id());
    EXPECT_EQ(3, updates());
    CommandManager::instance().redo(document.id()); // nothing to redo
    EXPECT_EQ(3, updates());
    EXPECT_FALSE(controller().is_locked());
}

TEST_F(UndoRedo, HistoriesOfOtherDocumentsRefreshToo)
{
    FakeDocument& other = support::create_document();
    DocumentManager::instance().current_document(document.id());
    journal().clear();
    run(other, "X");
    EXPECT_EQ(1, updates());
}

TEST_F(UndoRedo, FollowsAgainAfterUndoAndRedo)
{
    controller().undo(1);
    controller().redo(1);
    run(document, "D");
    EXPECT_EQ(1, updates());
}

TEST_F(UndoRedo, ThrowingUndoEndsTheStepsAndLeavesTheHistoriesFollowed)
{
    b->on_finished = support::throws_std("boom");
    EXPECT_THROW(controller().undo(3), std::runtime_error);
    EXPECT_EQ(0, journal().count("A."));
    EXPECT_TRUE(TestAccess::follows_history(controller()));
    run(document, "D");
    EXPECT_EQ(1, updates());
}

TEST_F(UndoRedo, ThrowingRedoEndsTheStepsAndLeavesTheHistoriesFollowed)
{
    controller().undo(3);
    b->on_finished = support::throws_std("boom");
    journal().clear();
    EXPECT_THROW(controller().redo(3), std::runtime_error);
    EXPECT_EQ(0, journal().count("C."));
    EXPECT_TRUE(TestAccess::follows_history(controller()));
}

// Details

TEST_F(UndoRedo, DetailsAreTheMostRecentOnesFirst)
{
    EXPECT_THAT(names(controller().getUndoCommandDetails(0)), IsEmpty());
    EXPECT_THAT(names(controller().getUndoCommandDetails(2)), ElementsAre("C", "B"));
    EXPECT_THAT(names(controller().getUndoCommandDetails(s_all)), ElementsAre("C", "B", "A"));
    EXPECT_THAT(names(controller().getRedoCommandDetails(s_all)), IsEmpty());
    controller().undo(2);
    EXPECT_THAT(names(controller().getUndoCommandDetails(3)), ElementsAre("A"));
    EXPECT_THAT(names(controller().getRedoCommandDetails(0)), IsEmpty());
    EXPECT_THAT(names(controller().getRedoCommandDetails(1)), ElementsAre("B"));
    EXPECT_THAT(names(controller().getRedoCommandDetails(2)), ElementsAre("B", "C"));
    EXPECT_EQ(1u, controller().undo_count());
    EXPECT_EQ(2u, controller().redo_count());
}

TEST_F(UndoRedo, DetailsAreCopies)
{
    c->setDescription("by 90 degrees");
    const std::vector<CommandDetails> details = controller().getUndoCommandDetails(1);
    c->setDescription("by 180 degrees");
    ASSERT_EQ(1u, details.size());
    EXPECT_EQ("by 90 degrees", details[0].description());
}

// Threads

TEST_F(UndoRedo, MessagesOfAWorkerArriveInTheControllersThread)
{
    const support::App app;
    QThread* p_updated_in = nullptr;
    view.on_update = [&p_updated_in] { p_updated_in = QThread::currentThread(); };
    const boost::shared_ptr<FakeCommand> command = make_command(document.id(), "D");
    std::thread([&command] { CommandManager::instance().insert(command, false); }).join();
    EXPECT_EQ(1, journal().count("D.do"));
    EXPECT_EQ(0, updates()); // it waits for the event loop
    ASSERT_TRUE(support::wait_until([] { return updates() == 1; }));
    EXPECT_EQ(QThread::currentThread(), p_updated_in);
    EXPECT_THAT(names(controller().getUndoCommandDetails(1)), ElementsAre("D"));
}
