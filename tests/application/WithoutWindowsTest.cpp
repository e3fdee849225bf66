#include "Probe.h"
#include "support/DialogDriver.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <string>

// What a program without windows does without, and one with windows does not.

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ErrorHandler;
using testing::HasSubstr;
using testing::Not;

/// Nothing says which display to use.
void unset_display(Probe& probe)
{
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        probe.unset(name);
    }
}

/// A program without windows that has one all the same.
class WithoutWindows : public testing::Test
{
protected:
    WithoutWindows()
    {
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        EXPECT_TRUE(support::wait_until([this] { return QApplication::activeWindow() == &m_window; }));
    }
    ~WithoutWindows() override { EXPECT_TRUE(dialogs.shown().empty()); }

private:
    const StartedApplication m_started{false};
    QWidget m_window;

protected:
    support::DialogDriver dialogs; // closes what should not be there
    LogCapture log;
};

} // namespace

TEST(ApplicationManagerDisplay, ProgramWithoutWindowsNeedsNone)
{
    Probe probe;
    unset_display(probe);
    ASSERT_TRUE(probe.start({"--batch"})) << probe.error();
    EXPECT_EQ(probe.fact("platform"), "offscreen");
    EXPECT_EQ(probe.fact("gui"), "no");
    EXPECT_EQ(probe.finish(), 0);
}

TEST(ApplicationManagerDisplay, ProgramWithoutWindowsTakesWhatTheUserNames)
{
    Probe probe;
    probe.unset("DISPLAY");
    probe.set("QT_QPA_PLATFORM", "minimal");
    ASSERT_TRUE(probe.start({"--batch"})) << probe.error();
    EXPECT_EQ(probe.fact("platform"), "minimal");
    EXPECT_EQ(probe.finish(), 0);
}

TEST(ApplicationManagerDisplay, ProgramWithoutWindowsDoesNotTryOneThatIsDead)
{
    Probe probe;
    unset_display(probe);
    probe.set("DISPLAY", ":4711");
    ASSERT_TRUE(probe.start({"--batch"})) << probe.error();
    EXPECT_EQ(probe.fact("platform"), "offscreen");
    EXPECT_EQ(probe.finish(), 0);
    EXPECT_EQ(probe.error(), "");
}

TEST(ApplicationManagerDisplay, ProgramWithoutWindowsTakesWhatTheCommandLineNames)
{
    Probe probe;
    unset_display(probe);
    ASSERT_TRUE(probe.start({"--batch", "-platform", "minimal"})) << probe.error();
    EXPECT_EQ(probe.fact("platform"), "minimal");
    EXPECT_EQ(probe.finish(), 0);
}

TEST(ApplicationManagerDisplay, ProgramWithWindowsEndsWithQtsWordsWithoutOne)
{
    Probe probe;
    unset_display(probe);
    probe.unset("QT_DEVICE_PIXEL_RATIO");
    ASSERT_FALSE(probe.start());
    EXPECT_EQ(probe.wait_for_signal(), SIGABRT);
    EXPECT_THAT(probe.error(), HasSubstr("no Qt platform plugin could be initialized"));
    EXPECT_THAT(probe.error(), Not(HasSubstr("QT_DEVICE_PIXEL_RATIO"))); // only that is kept back
}

TEST_F(WithoutWindows, MessagesAreLoggedAndAnsweredWithOk)
{
    ErrorHandler& handler = ErrorHandler::instance();
    EXPECT_EQ(handler.message("Title", "a text", QMessageBox::Yes | QMessageBox::No), QMessageBox::Ok);
    EXPECT_TRUE(log.take("a text"));
    EXPECT_EQ(handler.message("Title", std::runtime_error("standard"), QMessageBox::Cancel), QMessageBox::Ok);
    EXPECT_TRUE(log.take("STD EXCEPTION THROWN:standard"));
}

TEST_F(WithoutWindows, LogIsNotSaved)
{
    EXPECT_FALSE(ErrorHandler::instance().request_save_log_file("Caption"));
    EXPECT_FALSE(ErrorHandler::instance().save_log_file());
}

TEST_F(WithoutWindows, FatalErrorGoesToStandardError)
{
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error("the end");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("Detail: the end\n"));
    EXPECT_EQ(log.text().rfind("FATAL ERROR!\nFurther Information: the end\n", 0), 0u);
    log.take_all();
}
