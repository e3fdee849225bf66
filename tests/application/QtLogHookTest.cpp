#include "Probe.h"
#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <QtCore/QDebug>
#include <QtCore/QMessageLogger>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <thread>
#include <vector>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// A started application whose log and standard error are looked at.
class QtLogHook : public testing::Test
{
protected:
    ~QtLogHook() override { log.take_all(); }

    const support::StartedApplication started;
    support::LogCapture log;
};

} // namespace

TEST_F(QtLogHook, CriticalMessageIsLogged)
{
    QMessageLogger().critical("the disk is gone");
    EXPECT_EQ(log.text(), "QtCriticalMsg: the disk is gone\n");
}

TEST_F(QtLogHook, CriticalMessageNamesItsSource)
{
    QMessageLogger("some/file.cpp", 12, "void f()").critical("the disk is gone");
    EXPECT_EQ(log.text(), "QtCriticalMsg: the disk is gone (in some/file.cpp:12)\n");
}

TEST_F(QtLogHook, SourceWithoutALineIsLineZero)
{
    QMessageLogger("file.cpp", 0, nullptr).critical("text");
    EXPECT_EQ(log.text(), "QtCriticalMsg: text (in file.cpp:0)\n");
}

TEST_F(QtLogHook, PercentSignsStandAsTheyAre)
{
    QMessageLogger("a%2%3.cpp", 3, nullptr).critical("%s", "100%1 %2 %3 %n %%");
    EXPECT_EQ(log.text(), "QtCriticalMsg: 100%1 %2 %3 %n %% (in a%2%3.cpp:3)\n");
}

TEST_F(QtLogHook, TextIsUtf8)
{
    QMessageLogger().critical("%s", "Gel\xc3\xa4nde \xe2\x82\xac");
    EXPECT_EQ(log.text(), "QtCriticalMsg: Gel\xc3\xa4nde \xe2\x82\xac\n");
}

TEST_F(QtLogHook, EmptyTextIsLoggedToo)
{
    QMessageLogger().critical("%s", "");
    EXPECT_EQ(log.text(), "QtCriticalMsg: \n");
}

TEST_F(QtLogHook, HugeTextIsLoggedWhole)
{
    const std::string huge(1024 * 1024, 'x');
    QMessageLogger().critical() << huge.c_str();
    EXPECT_EQ(log.text(), "QtCriticalMsg: " + huge + "\n");
}

TEST_F(QtLogHook, DebugWarningAndInfoMessagesAreDropped)
{
    testing::internal::CaptureStderr();
    QMessageLogger("file.cpp", 1, "f").debug("debug");
    QMessageLogger("file.cpp", 1, "f").info("info");
    QMessageLogger("file.cpp", 1, "f").warning("warning");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(log.text(), "");
}

TEST_F(QtLogHook, TakesMessagesOfWorkerThreads)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number) {
        threads.emplace_back([number] {
            for (int entry = 0; entry < 50; ++entry) {
                QMessageLogger("file.cpp", entry, "f").critical("thread %d", number);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(log.lines().size(), 8u * 50u);
    for (int number = 0; number < 8; ++number) {
        EXPECT_TRUE(log.take("QtCriticalMsg: thread " + std::to_string(number) + " (in file.cpp:49)"));
    }
    EXPECT_EQ(log.count("QtCriticalMsg: thread "), 8 * 49);
}

// --- fatal messages

TEST(QtFatalMessage, LeavesALogOfItsOwnAndEndsTheProgram)
{
    Probe probe;
    ASSERT_TRUE(probe.start({"--fatal"})) << probe.error();
    EXPECT_EQ(probe.wait_for_signal(), SIGABRT);
    EXPECT_THAT(probe.log(),
        StartsWith("FATAL ERROR!\nFurther Information: QtFatalMsg: the end of %1 (in probe.cpp:7)\n\n"));
}

TEST(QtFatalMessage, IsShownOnStandardErrorWithoutAWindow)
{
    Probe probe;
    ASSERT_TRUE(probe.start({"--fatal", "--batch"})) << probe.error();
    EXPECT_EQ(probe.wait_for_signal(), SIGABRT);
    EXPECT_THAT(probe.error(), HasSubstr("Fatal error!  Tarq has terminated unexpectedly."));
    EXPECT_THAT(probe.error(), HasSubstr("\nDetail: QtFatalMsg: the end of %1 (in probe.cpp:7)\n"));
}

TEST(QtFatalMessage, OfAWorkerThreadEndsTheProgramToo)
{
    Probe probe;
    ASSERT_TRUE(probe.start({"--fatal-in-worker"})) << probe.error();
    EXPECT_EQ(probe.wait_for_signal(), SIGABRT);
    EXPECT_THAT(probe.log(), StartsWith("FATAL ERROR!\nFurther Information: QtFatalMsg: the end\n\n"));
}
