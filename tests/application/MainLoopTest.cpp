#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>

#include <QtCore/QEventLoop>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <cpl_error.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::ErrorHandler;

const char* const s_source = "housekeeping/src/ApplicationManager";
const char* const s_main_loop = "ApplicationManager::main_loop() const";
const char* const s_exit = "ApplicationManager::exit_main_loop() const";

void in_the_loop(const std::function<void()>& action)
{
    QTimer::singleShot(0, action);
}

/// A program with its window, before the main loop.
class MainLoop : public testing::Test
{
protected:
    MainLoop() { manager().top_level_widget(&m_window); }

    ApplicationManager& manager() const { return m_started.manager(); }

    /// Whether the manager takes the calling function for one that the main loop calls.
    bool is_in_main_loop()
    {
        manager().top_level_widget(&m_window); // checks the flag
        const char* const setter = "ApplicationManager::top_level_widget(QWidget*)";
        EXPECT_TRUE(log.took_assert("0 == m_p_top_widget", setter, s_source));
        return log.took_assert("false == m_in_main_loop", setter, s_source);
    }

private:
    StartedApplication m_started;

protected:
    LogCapture log;

private:
    QWidget m_window;
};

TEST_F(MainLoop, RunsUntilItIsLeft)
{
    bool late = false;
    in_the_loop([&] {
        in_the_loop([&] {
            late = true;
            manager().exit_main_loop();
        });
    });
    EXPECT_FALSE(late);
    manager().main_loop();
    EXPECT_TRUE(late);
}

TEST_F(MainLoop, EndsWithQuit)
{
    bool reached = false;
    in_the_loop([&reached] {
        reached = true;
        ApplicationManager::quit();
    });
    manager().main_loop();
    EXPECT_TRUE(reached);
    EXPECT_FALSE(is_in_main_loop());
}

TEST_F(MainLoop, IsLeftFromAWorker)
{
    std::thread worker;
    in_the_loop([&] { worker = std::thread([this] { manager().exit_main_loop(); }); });
    manager().main_loop();
    worker.join();
    EXPECT_FALSE(is_in_main_loop());
}

TEST_F(MainLoop, IsLeftByAFatalErrorOfAWorker)
{
    ErrorHandler::instance();
    testing::internal::CaptureStderr();
    std::thread worker;
    in_the_loop([&] { worker = std::thread([] { ErrorHandler::instance().fatal_error("the end"); }); });
    manager().main_loop();
    worker.join();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Detail: the end\n"), std::string::npos);
    EXPECT_EQ(log.text().find("FATAL ERROR!\nFurther Information: the end\n"), 0u);
    log.take_all();
}

TEST_F(MainLoop, EndsWhenTheLastWindowIsClosed)
{
    QSignalSpy spy(&manager(), SIGNAL(lastWindowClosed()));
    manager().show();
    in_the_loop([&] { manager().top_level_widget()->close(); });
    EXPECT_EQ(spy.count(), 0);
    manager().main_loop();
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(MainLoop, KnowsThatItRuns)
{
    bool inside = false;
    in_the_loop([&] {
        inside = is_in_main_loop();
        manager().exit_main_loop();
    });
    EXPECT_FALSE(is_in_main_loop());
    manager().main_loop();
    EXPECT_TRUE(inside);
    EXPECT_FALSE(is_in_main_loop());
}

TEST_F(MainLoop, IsOverAsSoonAsItIsToldToEnd)
{
    bool inside = true;
    in_the_loop([&] {
        manager().exit_main_loop();
        inside = is_in_main_loop();
    });
    manager().main_loop();
    EXPECT_FALSE(inside);
}

TEST_F(MainLoop, ExitOutsideOfItLeavesOtherLoopsAlone)
{
    QEventLoop loop;
    bool went_on = false;
    in_the_loop([&] {
        manager().exit_main_loop();
        in_the_loop([&] {
            went_on = true;
            loop.quit();
        });
    });
    loop.exec();
    EXPECT_TRUE(went_on);
}

TEST_F(MainLoop, ExitBeforeItDoesNotEndItLater)
{
    bool reached = false;
    manager().exit_main_loop();
    in_the_loop([&] {
        reached = true;
        manager().exit_main_loop();
    });
    manager().main_loop();
    manager().exit_main_loop();
    EXPECT_TRUE(reached);
}

TEST_F(MainLoop, DoesNotRunInsideItself)
{
    bool nested_returned = false;
    bool still_inside = false;
    bool went_on = false;
    in_the_loop([&] {
        manager().main_loop();
        nested_returned = true;
        EXPECT_TRUE(log.took_assert("false == m_in_main_loop", s_main_loop, s_source));
        still_inside = is_in_main_loop();
        in_the_loop([&] {
            went_on = true;
            manager().exit_main_loop();
        });
    });
    QTimer::singleShot(10000, [] { ApplicationManager::quit(); }); // if exit_main_loop() does nothing
    manager().main_loop();
    EXPECT_TRUE(nested_returned);
    EXPECT_TRUE(still_inside);
    EXPECT_TRUE(went_on);
    EXPECT_FALSE(is_in_main_loop());
}

/// Throws what the program does not know.
class Thrower : public QObject
{
public:
    bool event(QEvent* p_event) override
    {
        if (p_event->type() == QEvent::User) {
            throw 42;
        }
        return QObject::event(p_event);
    }
};

std::string s_messages;

void note_message(CPLErr, CPLErrorNum, const char* message)
{
    s_messages += message;
}

TEST(MainLoopThrownOutOf, IsOverAndHasLetGo)
{
    qputenv("QT_NO_GLIB", "1"); // exceptions pass through Qt's own loop
    CPLSetErrorHandler(&note_message);
    const StartedApplication started;
    QWidget window;
    started.manager().top_level_widget(&window);
    LogCapture log;
    Thrower thrower;
    QCoreApplication::postEvent(&thrower, new QEvent(QEvent::User));
    EXPECT_THROW(started.manager().main_loop(), int);

    started.manager().top_level_widget(&window); // checks the flag
    EXPECT_TRUE(log.took_assert("0 == m_p_top_widget", "top_level_widget", s_source));
    EXPECT_EQ(log.count("false == m_in_main_loop"), 0);
    CPLError(CE_Warning, CPLE_AppDefined, "after");
    EXPECT_EQ(s_messages, "after");
}

TEST(MainLoopWithoutWindow, IsLoggedAndRuns)
{
    const StartedApplication started;
    LogCapture log;
    bool reached = false;
    in_the_loop([&] {
        reached = true;
        started.manager().exit_main_loop();
        EXPECT_TRUE(log.took_assert("m_p_top_widget", s_exit, s_source));
    });
    started.manager().main_loop();
    EXPECT_TRUE(log.took_assert("m_p_top_widget", s_main_loop, s_source));
    EXPECT_TRUE(reached);
}

TEST(MainLoopWithoutGui, IsLoggedAndRuns)
{
    const StartedApplication started(false);
    LogCapture log;
    QWidget window;
    started.manager().top_level_widget(&window);
    bool reached = false;
    in_the_loop([&] {
        reached = true;
        started.manager().exit_main_loop();
        EXPECT_TRUE(log.took_assert("m_gui_application", s_exit, s_source));
    });
    started.manager().main_loop();
    EXPECT_TRUE(log.took_assert("m_gui_application", s_main_loop, s_source));
    EXPECT_TRUE(reached);
}

TEST(MainLoopBeforeStart, ExitIsLoggedOnly)
{
    LogCapture log;
    ApplicationManager::instance().exit_main_loop();
    EXPECT_TRUE(log.took_assert("m_p_top_widget", s_exit, s_source));
    EXPECT_TRUE(log.took_assert("m_gui_application", s_exit, s_source));
}

TEST(MainLoopWithoutWindow, FatalErrorReturns)
{
    const StartedApplication started;
    LogCapture log;
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error("the end");
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(log.text().find("FATAL ERROR!\nFurther Information: the end\n"), 0u);
    log.take_all();
}

} // namespace
