#include "PanelFixture.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/gui/AbstractMainWindow.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QMetaMethod>
#include <QtWidgets/QAction>

#include <type_traits>

// The one instance, and what the class offers.

using support::LogCapture;
using tarqa::housekeeping::gui::AbstractMainWindow;
using testing::ElementsAre;

namespace {

const char* const s_source = "housekeeping/gui/src/AbstractMainWindow";
const char* const s_class = "AbstractMainWindow";

int count_of(const QMetaObject& meta, QMetaMethod::MethodType type)
{
    int count = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        count += meta.method(i).methodType() == type ? 1 : 0;
    }
    return count;
}

} // namespace

TEST(AbstractMainWindow, NoInstanceBeforeTheFirstWindow)
{
    LogCapture log;
    EXPECT_FALSE(AbstractMainWindow::hasInstance());
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ(AbstractMainWindow::instance(), nullptr);
    EXPECT_TRUE(log.took_assert("m_instance", "instance", s_source));
    EXPECT_EQ(AbstractMainWindow::instance(), nullptr);
    EXPECT_TRUE(log.took_assert("m_instance", "instance", s_source)); // each time
    EXPECT_FALSE(AbstractMainWindow::hasInstance());
}

TEST(AbstractMainWindow, FirstWindowIsTheInstanceWithoutAnEntry)
{
    const support::App app;
    const LogCapture log;
    const PanelWindow window;
    EXPECT_TRUE(AbstractMainWindow::hasInstance());
    EXPECT_EQ(AbstractMainWindow::instance(), &window);
}

TEST(AbstractMainWindow, NewestWindowWinsAndIsLogged)
{
    const support::App app;
    LogCapture log;
    const PanelWindow first;
    const PanelWindow second;
    EXPECT_TRUE(log.took_assert("m_instance == 0", s_class, s_source));
    EXPECT_EQ(AbstractMainWindow::instance(), &second);
    const PanelWindow third;
    EXPECT_TRUE(log.took_assert("m_instance == 0", s_class, s_source));
    EXPECT_EQ(AbstractMainWindow::instance(), &third);
}

TEST(AbstractMainWindow, DestroyedWindowStaysTheInstance)
{
    const support::App app;
    LogCapture log;
    auto window = std::make_unique<PanelWindow>();
    const AbstractMainWindow* const p_was = window.get(); // compared, never used
    window.reset();
    EXPECT_TRUE(AbstractMainWindow::hasInstance());
    EXPECT_TRUE(AbstractMainWindow::instance() == p_was);
    const PanelWindow next;
    EXPECT_TRUE(log.took_assert("m_instance == 0", s_class, s_source));
    EXPECT_EQ(AbstractMainWindow::instance(), &next);
}

TEST(AbstractMainWindow, EndOfAnOlderWindowLeavesTheNewest)
{
    const support::App app;
    LogCapture log;
    auto older = std::make_unique<PanelWindow>();
    const PanelWindow newest;
    EXPECT_TRUE(log.take("m_instance == 0"));
    older.reset();
    EXPECT_EQ(AbstractMainWindow::instance(), &newest);
}

TEST(AbstractMainWindow, TakesParentAndWindowFlags)
{
    const support::App app;
    QWidget parent;
    const AbstractMainWindow tool(&parent, Qt::Tool);
    EXPECT_EQ(tool.parentWidget(), &parent);
    EXPECT_EQ(tool.windowType(), Qt::Tool);
}

TEST(AbstractMainWindow, NeedsNeitherParentNorFlags)
{
    const support::App app;
    const AbstractMainWindow window;
    EXPECT_EQ(window.parentWidget(), nullptr);
    EXPECT_EQ(window.windowType(), Qt::Window);
    EXPECT_EQ(QMainWindow().windowFlags(), window.windowFlags());
}

TEST(AbstractMainWindow, IsAMainWindowOfQt)
{
    EXPECT_TRUE((std::is_base_of_v<QMainWindow, AbstractMainWindow>));
    EXPECT_TRUE(std::has_virtual_destructor_v<AbstractMainWindow>);
    EXPECT_STREQ(
        AbstractMainWindow::staticMetaObject.className(), "tarqa::housekeeping::gui::AbstractMainWindow");
}

TEST(AbstractMainWindow, SignalsStandInTheirOrder)
{
    const QMetaObject& meta = AbstractMainWindow::staticMetaObject;
    ASSERT_EQ(count_of(meta, QMetaMethod::Signal), 3);
    const int first = meta.methodOffset();
    EXPECT_EQ(meta.method(first).methodSignature(), "dropped(UrlList)");
    EXPECT_EQ(meta.method(first + 1).methodSignature(), "detachingPanel(int)");
    EXPECT_EQ(meta.method(first + 2).methodSignature(), "attachedPanel(int)");
    for (int i = first; i < first + 3; ++i) {
        EXPECT_EQ(meta.method(i).methodType(), QMetaMethod::Signal) << i;
        EXPECT_STREQ(meta.method(i).typeName(), "void") << i;
    }
}

TEST(AbstractMainWindow, SlotsOfTheTabBarArePrivate)
{
    const QMetaObject& meta = AbstractMainWindow::staticMetaObject;
    for (const char* const signature : {"slotTabBarMoved(QString)", "currentTabChanged(int)"}) {
        const int index = meta.indexOfSlot(signature);
        ASSERT_GE(index, meta.methodOffset()) << signature;
        EXPECT_EQ(meta.method(index).access(), QMetaMethod::Private) << signature;
    }
}

TEST(AbstractMainWindow, DroppedFilesReachTheReceiver)
{
    const support::App app;
    PanelWindow window;
    std::vector<std::vector<std::string>> received;
    QObject::connect(&window, &AbstractMainWindow::dropped,
        [&received](const tarqa::utilities::UrlList& files) { received.push_back(files); });
    emit window.dropped({"file:///a", "file:///b c"});
    emit window.dropped({});
    ASSERT_EQ(received.size(), 2u);
    EXPECT_THAT(received[0], ElementsAre("file:///a", "file:///b c"));
    EXPECT_TRUE(received[1].empty());
    EXPECT_TRUE((std::is_same_v<tarqa::utilities::UrlList, std::vector<std::string>>));
}

TEST(AbstractMainWindow, MayCloseUnlessTheHostObjects)
{
    const support::App app;
    PanelWindow window;
    EXPECT_TRUE(window.may_close());
}

TEST(AbstractMainWindow, LeavesTheUndoActionsToTheHost)
{
    const support::App app;
    PanelWindow window;
    QAction undo("Undo");
    QAction redo("Redo");
    window.take_undo_redo_actions(&undo, &redo);
    window.take_undo_redo_actions(nullptr, nullptr);
    EXPECT_TRUE(window.actions().isEmpty());
    EXPECT_EQ(undo.parent(), nullptr);
    EXPECT_TRUE(undo.associatedWidgets().isEmpty());
    EXPECT_TRUE(redo.associatedWidgets().isEmpty());
}
