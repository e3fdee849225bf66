#include "commands/FatalErrorProbe.h"
#include "gui/UndoRedoFixture.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/StartedApplication.h"

#include <pkBase/pkDestructor.h>

#include <QtCore/QPointer>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QToolBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>

using namespace tarqa::housekeeping;
using namespace undo_redo_test;
using support::JournalingReceiver;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A document with the commands 1 to 4.
class UndoRedoRuns : public UndoRedoFixture
{
protected:
    UndoRedoRuns()
    {
        run_many(document, 3);
        newest = run(document, "4");
        journal().clear();
    }

    static void mark_busy(const FakeDocument& busy, bool on)
    {
        DocumentManager::instance().document_busy(busy.id(), on);
    }

    /// The undo list, open.
    static QMenu& open_list()
    {
        QMenu& list = *undo_tool().menu();
        list.popup(QPoint(0, 0));
        EXPECT_TRUE(list.isVisible());
        return list;
    }

    /// All that undoing goes through is as before.
    static void expect_usable()
    {
        EXPECT_FALSE(DocumentManager::instance().documents_busy());
        EXPECT_TRUE(TestAccess::follows_history(controller()));
        EXPECT_TRUE(free_for_others());
    }

    FakeDocument& document = support::create_document();
    boost::shared_ptr<FakeCommand> newest;
};

/// The singletons in one order of their first use.
class UndoRedoShutdown : public testing::TestWithParam<const char*>
{ };

INSTANTIATE_TEST_SUITE_P(UndoRedo, UndoRedoShutdown,
    testing::Values("ControllersDocumentsPresentations", "ControllersPresentationsDocuments",
        "DocumentsControllersPresentations", "DocumentsPresentationsControllers",
        "PresentationsControllersDocuments", "PresentationsDocumentsControllers"),
    [](const testing::TestParamInfo<const char*>& order) { return std::string(order.param); });

void touch_singletons(std::string order)
{
    while (!order.empty()) {
        const auto next = [&order](const std::string& name) {
            const bool found = order.rfind(name, 0) == 0;
            order.erase(0, found ? name.size() : 0);
            return found;
        };
        if (next("Controllers")) {
            ControllerManager::instance();
        } else if (next("Documents")) {
            DocumentManager::instance();
        } else {
            ASSERT_TRUE(next("Presentations"));
            PresentationManager::instance();
        }
    }
}

} // namespace

// A run

TEST_F(UndoRedoRuns, DocumentIsBusyOnceForAllSteps)
{
    const JournalingReceiver receiver;
    presentation().undos_selected(2);
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.busy(true)", "Busy(Document 1)", "DocumentHistoryMsg", "4.undo",
            "4.finished(true)", "CommandMessage(4, 1)", "DocumentHistoryMsg", "3.undo", "3.finished(true)",
            "CommandMessage(3, 1)", "Idle(Document 1)", "Document 1.busy(false)"));
    journal().clear();
    presentation().redos_selected(1);
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.busy(true)", "Busy(Document 1)", "DocumentHistoryMsg",
            "Document 1.modified(true)", "3.remember", "3.do", "3.finished(true)",
            "CommandMessage(3, 0, redo)", "Idle(Document 1)", "Document 1.busy(false)"));
}

TEST_F(UndoRedoRuns, OtherViewsAreRefreshedOnce)
{
    support::FakeView view("view");
    view.register_controller(&controller());
    presentation().undos_selected(3);
    EXPECT_EQ(1, journal().count("view.update"));
    presentation().redos_selected(2);
    EXPECT_EQ(2, journal().count("view.update"));
}

TEST_F(UndoRedoRuns, OtherViewsAreRefreshedAtTheEndUnderTheLock)
{
    const JournalingReceiver receiver;
    support::FakeView view("view");
    view.register_controller(&controller());
    view.on_update = [] {
        EXPECT_FALSE(free_for_others());
        EXPECT_FALSE(DocumentManager::instance().documents_busy());
    };
    presentation().undo();
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.busy(true)", "Busy(Document 1)", "DocumentHistoryMsg", "4.undo",
            "4.finished(true)", "CommandMessage(4, 1)", "Idle(Document 1)", "Document 1.busy(false)",
            "view.update"));
    view.on_update = nullptr;
    view.unregister();
}

TEST_F(UndoRedoRuns, ControllerIsLockedMeanwhile)
{
    newest->on_undo = [] { EXPECT_FALSE(free_for_others()); };
    newest->on_do = newest->on_undo;
    presentation().undo();
    presentation().redo();
    EXPECT_EQ(1, journal().count("4.undo"));
    EXPECT_EQ(1, journal().count("4.do"));
    expect_usable();
}

TEST_F(UndoRedoRuns, TextsArePlainMeanwhile)
{
    newest->on_undo = [] {
        EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
        EXPECT_THAT(tool_tips(), ElementsAre("Undo", "Redo"));
        EXPECT_EQ(nullptr, undo_tool().menu());
    };
    presentation().undo();
    EXPECT_EQ(1, journal().count("4.undo"));
    EXPECT_THAT(texts(), ElementsAre("&Undo 3", "&Redo 4"));
}

// Nothing happens

TEST_F(UndoRedoRuns, NothingHappensWhileADocumentIsBusy)
{
    presentation().undo();
    FakeDocument& other = support::create_document();
    DocumentManager::instance().current_document(document.id());
    const JournalingReceiver receiver;
    for (const FakeDocument* p_busy : {&document, &other}) {
        mark_busy(*p_busy, true);
        journal().clear();
        presentation().undo();
        presentation().redo();
        presentation().undos_selected(2);
        presentation().redos_selected(2);
        undo_action().trigger();
        redo_tool().trigger();
        EXPECT_THAT(journal().entries(), IsEmpty());
        mark_busy(*p_busy, false);
    }
    presentation().undo();
    EXPECT_EQ(1, journal().count("3.undo"));
}

TEST_F(UndoRedoRuns, NothingIsChosenWhileADocumentIsBusy)
{
    QMenu& list = open_list();
    mark_busy(document, true);
    list.actions().at(1)->trigger();
    EXPECT_EQ(0, journal().count("4."));
    mark_busy(document, false);
    EXPECT_EQ(expected_lines("Undo", {"4", "3", "2", "1"}), opened(&undo_tool()));
}

TEST_F(UndoRedoRuns, NothingHappensInsideAnotherRun)
{
    const auto command = support::make_command(document.id(), "5");
    command->on_do = [] {
        presentation().undo();
        presentation().redo();
    };
    CommandManager::instance().insert(command, false);
    command->on_do = nullptr;
    EXPECT_EQ(1, journal().count("5.do"));
    EXPECT_EQ(0, journal().count("5.undo"));
    EXPECT_EQ(5u, document.document_history().undoSize());
}

TEST_F(UndoRedoRuns, NothingHappensWithoutADocument)
{
    close_document(document);
    journal().clear();
    const JournalingReceiver receiver;
    presentation().undo();
    presentation().redo();
    presentation().undos_selected(3);
    presentation().redos_selected(3);
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
}

TEST_F(UndoRedoRuns, NothingHappensDuringARunInAWorker)
{
    std::atomic<bool> running{false};
    std::atomic<bool> stop{false};
    const auto command = support::make_command(document.id(), "5");
    command->on_do = [&] {
        running = true;
        while (!stop) {
            std::this_thread::yield();
        }
    };
    std::thread worker([&command] { CommandManager::instance().insert(command, false); });
    while (!running) {
        std::this_thread::yield();
    }
    presentation().undo(); // would wait for the worker otherwise
    EXPECT_EQ(0, journal().count("4.undo"));
    stop = true;
    worker.join();
    EXPECT_TRUE(support::wait_until([] { return undo_action().text() == "&Undo 5"; }));
    EXPECT_EQ(expected_lines("Undo", {"5", "4", "3", "2", "1"}), opened(&undo_tool()));
}

// Exceptions

TEST_F(UndoRedoRuns, FatalUndoWhileTheListIsOpenIsReportedAndGoesOn)
{
    newest->on_undo = support::throws_std("boom");
    QMenu& list = open_list();
    support::LogCapture log;
    support::FatalErrorProbe probe;
    list.actions().at(1)->trigger();
    EXPECT_EQ(1, support::FatalErrorProbe::exits());
    EXPECT_EQ(1, journal().count("3.undo"));
    EXPECT_TRUE(log.take("An unknown serious error has occured in this Command UNDO : boom"));
    log.take_all();
    expect_usable();
    EXPECT_EQ(expected_lines("Undo", {"2", "1"}), opened(&undo_tool()));
    EXPECT_EQ(expected_lines("Redo", {"3", "4"}), opened(&redo_tool()));
}

TEST_F(UndoRedoRuns, ExceptionThatLeavesTheRunLeavesNothingBusyOrLocked)
{
    newest->on_finished = support::throws_std("boom");
    EXPECT_THROW(presentation().undos_selected(3), std::runtime_error);
    expect_usable();
    EXPECT_THAT(texts(), ElementsAre("&Undo 3", "&Redo 4"));
    EXPECT_EQ(0, journal().count("3."));
    EXPECT_THROW(presentation().redo(), std::runtime_error);
    expect_usable();
    EXPECT_THAT(texts(), ElementsAre("&Undo 4", "&Redo"));
    newest->on_finished = nullptr;
    presentation().undos_selected(2);
    EXPECT_THAT(texts(), ElementsAre("&Undo 2", "&Redo 3"));
}

TEST_F(UndoRedoRuns, ExceptionThatLeavesTheRunLeavesNoViewBehindTheHistory)
{
    support::FakeView view("history");
    view.register_controller(&controller());
    newest->on_finished = support::throws_std("boom");
    EXPECT_THROW(presentation().undos_selected(3), std::runtime_error);
    EXPECT_GE(journal().count("history.update"), 1);
    newest->on_finished = nullptr;
    view.unregister();
}

TEST_F(UndoRedoRuns, MoreStepsThanThereAreComeToAnEnd)
{
    presentation().undos_selected(std::numeric_limits<std::size_t>::max());
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo 1"));
    presentation().redos_selected(std::numeric_limits<std::size_t>::max());
    EXPECT_THAT(texts(), ElementsAre("&Undo 4", "&Redo"));
}

TEST_F(UndoRedoRuns, OpenListUnchecksWhatTheHistoryHasChanged)
{
    QMenu& list = open_list();
    list.actions().at(1)->hover();
    run(document, "5");
    EXPECT_EQ(expected_lines("Undo", {"5", "4", "3", "2", "1"}), lines(list));
}

TEST_F(UndoRedoRuns, OpenListIsClosedWhenTheHistoryHasNoneAnyMore)
{
    QMenu& list = open_list();
    presentation().undos_selected(3);
    EXPECT_FALSE(list.isVisible());
}

TEST_F(UndoRedoRuns, SubscriberThatThrowsWhenTheDocumentBecomesBusyLeavesNoMark)
{
    JournalingReceiver receiver;
    receiver.on_document = [](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Busy) {
            throw std::runtime_error("boom");
        }
    };
    EXPECT_THROW(presentation().undo(), std::runtime_error);
    receiver.on_document = nullptr;
    expect_usable();
    presentation().undo();
    EXPECT_EQ(1, journal().count("4.undo"));
}

TEST_F(UndoRedoRuns, SubscriberThatThrowsWhenTheDocumentBecomesIdleLeavesNoMark)
{
    JournalingReceiver receiver;
    receiver.on_document = [](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Idle) {
            throw std::runtime_error("boom");
        }
    };
    EXPECT_THROW(presentation().undo(), std::runtime_error);
    receiver.on_document = nullptr;
    expect_usable();
    EXPECT_THAT(texts(), ElementsAre("&Undo 3", "&Redo 4"));
}

TEST_F(UndoRedoRuns, SecondExceptionOnTheWayOutIsLoggedAndTheFirstGoesOn)
{
    newest->on_finished = support::throws_std("first");
    JournalingReceiver receiver;
    receiver.on_document = [](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Idle) {
            throw std::runtime_error("second");
        }
    };
    support::LogCapture log;
    try {
        presentation().undo();
        ADD_FAILURE() << "nothing thrown";
    } catch (const std::exception& e) {
        EXPECT_STREQ("first", e.what());
    }
    EXPECT_TRUE(log.take("second"));
    log.take_all();
    receiver.on_document = nullptr;
    expect_usable();
}

TEST_F(UndoRedoRuns, DocumentThatGoesInAFailingRunLeavesNoMark)
{
    support::create_document();
    DocumentManager::instance().current_document(document.id());
    newest->on_finished = [this] {
        close_document(document);
        throw std::runtime_error("boom");
    };
    support::LogCapture log;
    EXPECT_THROW(presentation().undo(), std::runtime_error);
    EXPECT_TRUE(log.take("Document does not exist"));
    log.take_all();
    expect_usable();
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
}

// What happens while a list is open

TEST_F(UndoRedoRuns, OpenListFollowsTheHistory)
{
    const QMenu& list = open_list();
    run(document, "5");
    EXPECT_EQ(expected_lines("Undo", {"5", "4", "3", "2", "1"}), lines(list));
    CommandManager::instance().undo(document.id());
    CommandManager::instance().undo(document.id());
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}), lines(list));
    EXPECT_TRUE(list.isVisible());
}

TEST_F(UndoRedoRuns, VeryLongOpenListFollowsTheHistoryToo)
{
    run_many(document, 200);
    const QMenu& list = open_list();
    run(document, "newest");
    const Lines shown = lines(list);
    ASSERT_EQ(207u, shown.size());
    EXPECT_EQ("[ ] newest (1)", shown[0]);
    EXPECT_EQ("[ ] 200 (2)", shown[1]);
    EXPECT_EQ("Undo 0 Actions (205)", shown.back());
}

TEST_F(UndoRedoRuns, OpenListOfADocumentThatIsClosedDoesNothing)
{
    QMenu& list = open_list();
    close_document(document);
    EXPECT_EQ(nullptr, undo_tool().menu());
    EXPECT_FALSE(list.isVisible());
    const QList<QAction*> entries = list.actions();
    journal().clear();
    for (QAction* p_entry : entries) {
        p_entry->hover();
        p_entry->trigger();
    }
    EXPECT_THAT(journal().entries(), IsEmpty());
    QCoreApplication::processEvents();
}

TEST_F(UndoRedoRuns, OpenListGoesOverToTheNextDocument)
{
    FakeDocument& other = support::create_document();
    run(other, "X");
    run(other, "Y");
    DocumentManager::instance().current_document(document.id());
    QMenu& list = open_list();
    close_document(document);
    EXPECT_EQ(&list, undo_tool().menu());
    EXPECT_EQ(expected_lines("Undo", {"Y", "X"}), lines(list));
    list.actions().at(0)->trigger();
    EXPECT_EQ(1u, other.document_history().undoSize());
}

TEST_F(UndoRedoRuns, PresentationMayGoWhileAListIsOpen)
{
    QMainWindow window;
    QToolBar* const p_tool_bar = window.addToolBar("edit");
    p_tool_bar->addAction(&undo_tool());
    p_tool_bar->addAction(&redo_tool());
    window.show();
    const QPointer<QMenu> undos = &open_list();
    presentation().undos_selected(2);
    const QPointer<QMenu> redos = redo_tool().menu();
    EXPECT_FALSE(redos.isNull());
    const QPointer<QAction> tool = &undo_tool();
    TestAccess::destroy<PresentationManager>();
    EXPECT_TRUE(undos.isNull());
    EXPECT_TRUE(redos.isNull());
    EXPECT_TRUE(tool.isNull());
    EXPECT_TRUE(p_tool_bar->actions().isEmpty());
    QCoreApplication::processEvents();
    run(document, "5"); // nobody shows it
    EXPECT_EQ(0u, TestAccess::registered_views());
}

TEST_F(UndoRedoRuns, PresentationMayBeHeldLonger)
{
    boost::shared_ptr<gui::UndoRedoPresentation> held = gui::UndoRedoPresentation::instance();
    TestAccess::destroy<PresentationManager>();
    run(document, "5");
    EXPECT_EQ("&Undo 5", held->undo_action()->text());
    held->undo();
    EXPECT_EQ("&Undo 4", held->undo_action()->text());
}

TEST_P(UndoRedoShutdown, OrderedDestructionTakesAll)
{
    QPointer<QMenu> list;
    {
        const support::StartedApplication started;
        touch_singletons(GetParam());
        support::init_controllers();
        PresentationManager::instance().init();
        FakeDocument& document = support::create_document();
        FakeDocument& other = support::create_document();
        run(other, "A", "", icon(Qt::red));
        run(other, "B");
        run_many(document, 150);
        list = gui::UndoRedoPresentation::instance()->undo_tool_bar_action()->menu();
        ASSERT_FALSE(list.isNull());
        list->popup(QPoint(0, 0));
    }
    EXPECT_TRUE(list.isNull());
    EXPECT_FALSE(TestAccess::peek<PresentationManager>());
    EXPECT_FALSE(TestAccess::peek<DocumentManager>());
    EXPECT_FALSE(TestAccess::peek<ControllerManager>());
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
    EXPECT_EQ(1, journal().count("Document 2.destroyed"));
    EXPECT_EQ(0u, TestAccess::registered_views());
}
