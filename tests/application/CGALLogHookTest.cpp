#include "support/LogCapture.h"
#include "support/StartedApplication.h"

// One set of handlers in the whole program: with hidden visibility the test would have its own.
#pragma GCC visibility push(default)
#include <CGAL/assertions.h>
#include <CGAL/exceptions.h>
#pragma GCC visibility pop

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

const std::string s_error = "A CGAL runtime error has been trapped\n";
const std::string s_warning = "A CGAL runtime warning has been trapped\n";

/// A started application whose log is looked at.
class CGALLogHook : public testing::Test
{
protected:
    ~CGALLogHook() override { log.take_all(); }

    /// The installed handlers, for calls that CGAL itself never makes.
    static CGAL::Failure_function error_handler()
    {
        const CGAL::Failure_function handler = CGAL::set_error_handler(nullptr);
        CGAL::set_error_handler(handler);
        return handler;
    }
    static CGAL::Failure_function warning_handler()
    {
        const CGAL::Failure_function handler = CGAL::set_warning_handler(nullptr);
        CGAL::set_warning_handler(handler);
        return handler;
    }

    const support::StartedApplication started;
    support::LogCapture log;
};

} // namespace

TEST_F(CGALLogHook, BehavioursAreToContinue)
{
    EXPECT_EQ(CGAL::set_error_behaviour(CGAL::CONTINUE), CGAL::CONTINUE);
    EXPECT_EQ(CGAL::set_warning_behaviour(CGAL::CONTINUE), CGAL::CONTINUE);
    EXPECT_EQ(static_cast<int>(CGAL::CONTINUE), 3);
}

TEST_F(CGALLogHook, BrokenPreconditionIsLoggedAndStillThrows)
{
    EXPECT_THROW(
        CGAL::precondition_fail("n > 0", "some/file.h", 12, "explanation"), CGAL::Precondition_exception);
    EXPECT_EQ(log.text(), s_error + "CGAL error: precondition\nExpr: n > 0\nFile: some/file.h\nLine: 12\n");
}

TEST_F(CGALLogHook, BrokenAssertionIsLoggedAndStillThrows)
{
    EXPECT_THROW(CGAL::assertion_fail("n > 0", "file.h", 1), CGAL::Assertion_exception);
    EXPECT_EQ(log.text(), s_error + "CGAL error: assertion\nExpr: n > 0\nFile: file.h\nLine: 1\n");
}

TEST_F(CGALLogHook, BrokenPostconditionIsLoggedAndStillThrows)
{
    EXPECT_THROW(CGAL::postcondition_fail("n > 0", "file.h", 1), CGAL::Postcondition_exception);
    EXPECT_EQ(log.text(), s_error + "CGAL error: postcondition\nExpr: n > 0\nFile: file.h\nLine: 1\n");
}

TEST_F(CGALLogHook, WarningIsLoggedAndTheProgramGoesOn)
{
    CGAL::warning_fail("n > 0", "some/file.h", 12, "explanation");
    EXPECT_EQ(log.text(), s_warning + "CGAL warning: warning\nExpr: n > 0\nFile: some/file.h\nLine: 12\n");
}

TEST_F(CGALLogHook, PrintsNothing)
{
    testing::internal::CaptureStderr();
    CGAL::warning_fail("n > 0", "file.h", 12, "explanation");
    EXPECT_THROW(CGAL::assertion_fail("n > 0", "file.h", 1), CGAL::Assertion_exception);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(CGALLogHook, PercentSignsStandAsTheyAre)
{
    warning_handler()("%1", "a %2 %n", "%3", -5, nullptr);
    EXPECT_EQ(log.text(), s_warning + "CGAL warning: %1\nExpr: a %2 %n\nFile: %3\nLine: -5\n");
}

TEST_F(CGALLogHook, ErrorWithoutWhatLeavesTheLineOut)
{
    error_handler()(nullptr, "n > 0", "file.h", 7, "explanation");
    EXPECT_EQ(log.text(), s_error + "Expr: n > 0\nFile: file.h\nLine: 7\n");
}

TEST_F(CGALLogHook, ErrorWithoutExpressionLeavesTheLineOut)
{
    error_handler()("precondition", nullptr, "file.h", 7, "explanation");
    EXPECT_EQ(log.text(), s_error + "CGAL error: precondition\nFile: file.h\nLine: 7\n");
}

TEST_F(CGALLogHook, ErrorWithoutFileLeavesTheLineOut)
{
    error_handler()("precondition", "n > 0", nullptr, 7, "explanation");
    EXPECT_EQ(log.text(), s_error + "CGAL error: precondition\nExpr: n > 0\nLine: 7\n");
}

TEST_F(CGALLogHook, ErrorWithNothingHasItsLineNumber)
{
    error_handler()(nullptr, nullptr, nullptr, 0, nullptr);
    EXPECT_EQ(log.text(), s_error + "Line: 0\n");
}

TEST_F(CGALLogHook, WarningWithNothingHasItsLineNumber)
{
    warning_handler()(nullptr, nullptr, nullptr, 0, nullptr);
    EXPECT_EQ(log.text(), s_warning + "Line: 0\n");
}

TEST_F(CGALLogHook, EmptyTextsAreGiven)
{
    error_handler()("", "", "", 7, "");
    EXPECT_EQ(log.text(), s_error + "CGAL error: \nExpr: \nFile: \nLine: 7\n");
}

TEST_F(CGALLogHook, TakesMessagesOfWorkerThreads)
{
    std::thread([] { CGAL::warning_fail("n > 0", "file.h", 12); }).join();
    EXPECT_EQ(log.text(), s_warning + "CGAL warning: warning\nExpr: n > 0\nFile: file.h\nLine: 12\n");
}
