#include "gui/UndoRedoFixture.h"
#include "support/EmptyRegistry.h"
#include "support/Kept.h"

#include <tarqa/housekeeping/DocumentMessage.h>

#include <boost/make_shared.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

// Other threads: what is read under the controller's lock, and messages that come from elsewhere.

using namespace tarqa::housekeeping;
using namespace undo_redo_test;
using testing::ElementsAre;

namespace {

/// The library's controller; tells when it is asked whether there is a document.
class WatchedController : public UndoRedoController
{
public:
    bool state_exists() const override
    {
        if (on_asked) {
            on_asked();
        }
        return UndoRedoController::state_exists();
    }

    static std::function<void()> on_asked;
};

std::function<void()> WatchedController::on_asked;

class WatchedControllerFactory : public AbstractControllerFactory
{
public:
    WatchedControllerFactory()
        : AbstractControllerFactory("UndoRedoController", false)
    { }
    boost::shared_ptr<AbstractController> create_product() override
    {
        return boost::make_shared<WatchedController>();
    }
    AbstractController* create_unmanaged_product() override { return new WatchedController; }
};

/// Has the watched controller registered alone.
class WatchedRegistry
{
protected:
    WatchedRegistry() { support::kept(new WatchedControllerFactory); }
    ~WatchedRegistry() { WatchedController::on_asked = nullptr; }

private:
    support::EmptyRegistry<AbstractControllerFactory> m_registry;
};

/// A document with many commands, the half of them undone.
class UndoRedoThreads : public WatchedRegistry, public UndoRedoFixture
{
protected:
    UndoRedoThreads()
    {
        run_many(document, 300);
        presentation().undos_selected(150);
    }

    /// How often @p action asks the controller for its document; each time nobody else may change it.
    static int times_asked(const std::function<void()>& action)
    {
        int count = 0;
        WatchedController::on_asked = [&count] {
            ++count;
            EXPECT_FALSE(free_for_others());
        };
        action();
        WatchedController::on_asked = nullptr;
        EXPECT_TRUE(free_for_others());
        return count;
    }

    static void send_from_another_thread(DocumentMessage::DocChangeType type)
    {
        std::thread([type] {
            DocumentMessage message;
            message.doc_change_type(type);
            message.dispatch();
        }).join();
    }

    FakeDocument& document = support::create_document();
};

} // namespace

TEST_F(UndoRedoThreads, HistoryIsReadUnderTheLockOfTheController)
{
    presentation().enable_edit_actions(false);
    EXPECT_EQ(1, times_asked([] { presentation().enable_edit_actions(true); }));
    EXPECT_THAT(texts(), ElementsAre("&Undo 150", "&Redo 151"));
    EXPECT_EQ(0, times_asked([] { presentation().enable_edit_actions(false); }));
}

TEST_F(UndoRedoThreads, LongListsAreReadUnderTheLockOfTheController)
{
    for (const QAction* p_action : {&undo_tool(), &redo_tool()}) {
        ASSERT_TRUE(p_action->menu());
        EXPECT_EQ(1, times_asked([p_action] { emit p_action->menu()->aboutToShow(); }));
        EXPECT_EQ(152, p_action->menu()->actions().size());
        EXPECT_EQ(0, times_asked([p_action] { emit p_action->menu()->aboutToShow(); })); // it is filled
    }
}

TEST_F(UndoRedoThreads, MessagesOfOtherThreadsWaitForTheMainThread)
{
    send_from_another_thread(DocumentMessage::Busy);
    EXPECT_THAT(texts(), ElementsAre("&Undo 150", "&Redo 151"));
    QCoreApplication::processEvents();
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
    send_from_another_thread(DocumentMessage::Idle);
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
    QCoreApplication::processEvents();
    EXPECT_THAT(texts(), ElementsAre("&Undo 150", "&Redo 151"));
}

TEST_F(UndoRedoThreads, OpenListStaysWhileTheDocumentIsBusy)
{
    QMenu& list = *undo_tool().menu();
    list.popup(QPoint(0, 0));
    DocumentManager::instance().document_busy(document.id(), true);
    EXPECT_EQ(nullptr, undo_tool().menu());
    EXPECT_TRUE(list.isVisible());
    DocumentManager::instance().document_busy(document.id(), false);
    EXPECT_EQ(&list, undo_tool().menu());
    EXPECT_TRUE(list.isVisible());
}
