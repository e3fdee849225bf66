#include "gui/UndoRedoFixture.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/MessageHandler.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <memory>

// The controller of undo and redo, whose lock is held both around runs and within them: only the main thread
// takes it, so nobody waits for it.

using namespace undo_redo_test;
using tarqa::housekeeping::ControllerLocker;
using tarqa::housekeeping::DocumentHistoryMsg;
using tarqa::housekeeping::MessageHandler;
using testing::ElementsAre;

namespace {

class LockOrder : public UndoRedoFixture
{
protected:
    /// Calls @p action in another thread while this one holds the controller's lock. @return whether it came
    /// to its end
    static bool ends_while_the_controller_is_locked(const std::function<void()>& action)
    {
        auto locker = std::make_unique<ControllerLocker>(controller());
        std::future<void> end = std::async(std::launch::async, action);
        const bool ended = end.wait_for(std::chrono::seconds(20)) == std::future_status::ready;
        locker.reset();
        end.get();
        return ended;
    }

    FakeDocument& document = support::create_document();
};

} // namespace

TEST_F(LockOrder, RunOfAWorkerDoesNotWaitForTheLockOfUndoAndRedo)
{
    const boost::shared_ptr<FakeCommand> command = support::make_command(document.id(), "Rotate");
    EXPECT_TRUE(ends_while_the_controller_is_locked(
        [&command] { CommandManager::instance().insert(command, false); }));
    EXPECT_EQ(1, journal().count("Rotate.do"));
    EXPECT_TRUE(support::wait_until([] { return texts() == Lines{"&Undo Rotate", "&Redo"}; }));
}

TEST_F(LockOrder, UndoAndRedoOfAWorkerDoNotWaitForItEither)
{
    run(document, "Rotate");
    const DocumentId id = document.id();
    EXPECT_TRUE(ends_while_the_controller_is_locked([id] {
        CommandManager::instance().undo(id);
        CommandManager::instance().redo(id);
        CommandManager::instance().undo(id);
    }));
    EXPECT_TRUE(support::wait_until([] { return texts() == Lines{"&Undo", "&Redo Rotate"}; }));
}

TEST_F(LockOrder, BusyMarksOfAWorkerDoNotWaitForIt)
{
    const DocumentId id = document.id();
    EXPECT_TRUE(ends_while_the_controller_is_locked([id] {
        DocumentManager::instance().document_busy(id, true);
        DocumentManager::instance().document_busy(id, false);
    }));
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
    QCoreApplication::processEvents();
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
}

TEST_F(LockOrder, MessageIsPostedByAWorkerWithoutWaitingForIt)
{
    support::DocumentHistoryMsgSpy spy;
    MessageHandler::instance(); // on this thread, which delivers
    EXPECT_TRUE(ends_while_the_controller_is_locked([] { (new DocumentHistoryMsg)->post(); }));
    EXPECT_TRUE(support::wait_until([&spy] { return spy.received().size() == 1; }));
    EXPECT_TRUE(free_for_others());
}
