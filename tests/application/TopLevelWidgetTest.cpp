#include "support/App.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QTimer>
#include <QtCore/QTranslator>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;

const char* const s_source = "housekeeping/src/ApplicationManager";
const char* const s_setter = "ApplicationManager::top_level_widget(QWidget*)";
const char* const s_getter = "ApplicationManager::top_level_widget() const";
const char* const s_show = "ApplicationManager::show(QWidget*) const";

TEST(ApplicationObject, DoesNotExistBeforeTheStart)
{
    LogCapture log;
    const ApplicationManager& manager = ApplicationManager::instance();
    EXPECT_EQ(manager.qapplication(), nullptr);
    EXPECT_TRUE(log.took_assert("m_p_qapplication", "ApplicationManager::qapplication() const", s_source));
    EXPECT_EQ(manager.qtranslator(), nullptr);
    EXPECT_TRUE(log.took_assert("m_p_qtranslator", "ApplicationManager::qtranslator() const", s_source));
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_FALSE(manager.isGuiApp());
    EXPECT_FALSE(manager.isSuspended());
}

TEST(ApplicationObject, ExistsAfterTheStart)
{
    const StartedApplication started;
    LogCapture log;
    EXPECT_NE(started.manager().qapplication(), nullptr);
    EXPECT_EQ(started.manager().qapplication(), QCoreApplication::instance());
    ASSERT_NE(started.manager().qtranslator(), nullptr);
    EXPECT_EQ(started.manager().qtranslator()->parent(), nullptr);
    EXPECT_TRUE(started.manager().qtranslator()->isEmpty());
}

TEST(ApplicationObject, ManagerIsOneObject)
{
    EXPECT_EQ(&ApplicationManager::instance(), &ApplicationManager::const_instance());
}

TEST(ApplicationObject, KnowsWhetherItHasWindows)
{
    const StartedApplication started(true);
    EXPECT_TRUE(started.manager().isGuiApp());
}

TEST(ApplicationObject, KnowsThatItHasNoWindows)
{
    const StartedApplication started(false);
    EXPECT_FALSE(started.manager().isGuiApp());
}

TEST(TopLevelWidget, IsKeptAndBecomesTheActiveWindow)
{
    const StartedApplication started;
    LogCapture log;
    QWidget other;
    QWidget window;
    QApplication::setActiveWindow(&other);
    started.manager().top_level_widget(&window);
    EXPECT_EQ(started.manager().top_level_widget(), &window);
    EXPECT_EQ(QApplication::activeWindow(), &window);
}

TEST(TopLevelWidget, IsTheActiveWindowThatAChildStandsIn)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    QWidget child(&window);
    started.manager().top_level_widget(&child);
    EXPECT_EQ(started.manager().top_level_widget(), &window);
}

TEST(TopLevelWidget, IsMissedBeforeItIsSet)
{
    const StartedApplication started;
    LogCapture log;
    EXPECT_EQ(started.manager().top_level_widget(), nullptr);
    EXPECT_TRUE(log.took_assert("m_p_top_widget", s_getter, s_source));
}

TEST(TopLevelWidget, NullChangesNothing)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    QApplication::setActiveWindow(&window);
    started.manager().top_level_widget(nullptr);
    EXPECT_TRUE(log.took_assert("p_widget", s_setter, s_source));
    EXPECT_EQ(QApplication::activeWindow(), &window);
    EXPECT_EQ(started.manager().top_level_widget(), nullptr);
    EXPECT_TRUE(log.took_assert("m_p_top_widget", s_getter, s_source));

    started.manager().top_level_widget(&window);
    EXPECT_EQ(started.manager().top_level_widget(), &window);
}

TEST(TopLevelWidget, NullAfterAWidgetLeavesTheWidget)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    started.manager().top_level_widget(&window);
    started.manager().top_level_widget(nullptr);
    EXPECT_TRUE(log.took_assert("p_widget", s_setter, s_source));
    EXPECT_TRUE(log.took_assert("0 == m_p_top_widget", s_setter, s_source));
    EXPECT_EQ(started.manager().top_level_widget(), &window);
}

TEST(TopLevelWidget, SecondOneIsLoggedAndTaken)
{
    const StartedApplication started;
    LogCapture log;
    QWidget first;
    QWidget second;
    started.manager().top_level_widget(&first);
    EXPECT_TRUE(log.lines().empty());
    started.manager().top_level_widget(&second);
    EXPECT_TRUE(log.took_assert("0 == m_p_top_widget", s_setter, s_source));
    EXPECT_EQ(started.manager().top_level_widget(), &second);
    EXPECT_EQ(QApplication::activeWindow(), &second);
}

TEST(TopLevelWidget, IsMissedWhenItWasDeleted)
{
    const StartedApplication started;
    LogCapture log;
    auto window = std::make_unique<QWidget>();
    started.manager().top_level_widget(window.get());
    window.reset();
    EXPECT_EQ(started.manager().top_level_widget(), nullptr);
    EXPECT_TRUE(log.took_assert("m_p_top_widget", s_getter, s_source));
    started.manager().show();
    EXPECT_TRUE(log.took_assert("m_p_top_widget", s_show, s_source));

    QWidget another; // the place is free again
    started.manager().top_level_widget(&another);
    EXPECT_EQ(started.manager().top_level_widget(), &another);
}

TEST(TopLevelWidget, IsNotToBeSetBeforeTheStart)
{
    support::App app;
    LogCapture log;
    QWidget window;
    ApplicationManager::instance().top_level_widget(&window);
    EXPECT_TRUE(log.took_assert("m_p_qapplication", s_setter, s_source));
}

TEST(TopLevelWidget, EachFailedCheckIsLogged)
{
    LogCapture log;
    ApplicationManager::instance().top_level_widget(nullptr);
    EXPECT_TRUE(log.took_assert("p_widget", s_setter, s_source));
    EXPECT_TRUE(log.took_assert("m_p_qapplication", s_setter, s_source));
}

TEST(TopLevelWidget, IsNotToBeSetInTheMainLoop)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    started.manager().top_level_widget(&window);
    QTimer::singleShot(0, [&] {
        started.manager().top_level_widget(&window);
        started.manager().exit_main_loop();
    });
    started.manager().main_loop();
    EXPECT_TRUE(log.took_assert("0 == m_p_top_widget", s_setter, s_source));
    EXPECT_TRUE(log.took_assert("false == m_in_main_loop", s_setter, s_source));
}

// show()

TEST(ShowWindow, ShowsAndActivatesTheTopLevelWidget)
{
    const StartedApplication started;
    LogCapture log;
    QWidget other;
    other.show();
    QWidget window;
    started.manager().top_level_widget(&window);
    EXPECT_FALSE(window.isVisible());
    QApplication::setActiveWindow(&other);
    started.manager().show();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(support::wait_until([&] { return QApplication::activeWindow() == &window; }));
}

TEST(ShowWindow, ShowsTheGivenWidgetOnly)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    QWidget splash;
    started.manager().top_level_widget(&window);
    started.manager().show(&splash);
    EXPECT_TRUE(splash.isVisible());
    EXPECT_FALSE(window.isVisible());
}

TEST(ShowWindow, ActivatesTheTopLevelWidgetAfterAnotherWasShown)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    QWidget tool;
    started.manager().top_level_widget(&window);
    started.manager().show();
    ASSERT_TRUE(support::wait_until([&] { return QApplication::activeWindow() == &window; }));
    QApplication::setActiveWindow(&tool);
    started.manager().show(&tool);
    EXPECT_TRUE(tool.isVisible());
    EXPECT_TRUE(support::wait_until([&] { return QApplication::activeWindow() == &window; }));
}

TEST(ShowWindow, DeliversWhatIsPending)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    started.manager().top_level_widget(&window);
    bool delivered = false;
    QMetaObject::invokeMethod(
        &window, [&delivered] { delivered = true; }, Qt::QueuedConnection);
    started.manager().show();
    EXPECT_TRUE(delivered);
}

TEST(ShowWindow, ComesBackFromEventsWithoutEnd)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    started.manager().top_level_widget(&window);
    QTimer busy;
    QObject::connect(&busy, &QTimer::timeout, [] {});
    busy.start(0);
    started.manager().show();
    EXPECT_TRUE(window.isVisible());
}

TEST(ShowWindow, WithoutATopLevelWidgetIsLogged)
{
    const StartedApplication started;
    LogCapture log;
    started.manager().show();
    EXPECT_TRUE(log.took_assert("m_p_top_widget", s_show, s_source));
}

TEST(ShowWindow, WithoutGuiIsLogged)
{
    const StartedApplication started(false);
    LogCapture log;
    QWidget window;
    started.manager().top_level_widget(&window);
    started.manager().show();
    EXPECT_TRUE(log.took_assert("m_gui_application", s_show, s_source));
}

TEST(ShowWindow, BeforeTheStartIsLogged)
{
    LogCapture log;
    ApplicationManager::instance().show();
    EXPECT_TRUE(log.took_assert("m_p_top_widget", s_show, s_source));
    EXPECT_TRUE(log.took_assert("m_gui_application", s_show, s_source));
    EXPECT_TRUE(log.took_assert("m_p_qapplication", s_show, s_source));
}

} // namespace
