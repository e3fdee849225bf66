#include "AssertionSubject.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <string>

// A failed check is written to the error log and the program goes on, however it is compiled.

namespace {

using support::LogCapture;

class Assertion : public testing::TestWithParam<bool>
{
protected:
    static const AssertionSubject& subject()
    {
        return GetParam() ? subject_of_release : subject_of_debugging;
    }

    static void expect_went_on(const Checked& checked, bool value)
    {
        EXPECT_EQ(value, checked.value);
        EXPECT_EQ(1, checked.evaluations);
        EXPECT_TRUE(checked.went_on);
    }
};

INSTANTIATE_TEST_SUITE_P(Builds, Assertion, testing::Bool(),
    [](const testing::TestParamInfo<bool>& ndebug) { return ndebug.param ? "Release" : "Debugging"; });

TEST_P(Assertion, FailedOneIsLoggedAndTheProgramGoesOn)
{
    LogCapture log;
    const Checked checked = subject().check(false);
    expect_went_on(checked, false);
    EXPECT_TRUE(log.took_assert("a && b", "plain_check(bool)", "tests/AssertionSubject", checked.line));
    EXPECT_TRUE(log.lines().empty());
}

TEST_P(Assertion, FailedOneMayNameItsLine)
{
    LogCapture log;
    const Checked checked = subject().check_at(false);
    expect_went_on(checked, false);
    EXPECT_TRUE(log.took_assert("at( c )", "check_with_a_line(bool)", "tests/AssertionSubject", 59));
    EXPECT_TRUE(log.lines().empty());
}

TEST_P(Assertion, FailedOneMayNameTheOperationThatWasCalled)
{
    LogCapture log;
    const Checked checked = subject().check_in(false);
    expect_went_on(checked, false);
    EXPECT_EQ("tests/AssertionSubject:" + std::to_string(checked.line)
            + " ASSERT FAILED in void Caller::operation(): in\n",
        log.text());
    log.take_all();
}

TEST_P(Assertion, EachFailureIsLogged)
{
    LogCapture log;
    subject().check(false);
    subject().check(false);
    subject().check_at(false);
    EXPECT_EQ(3, log.count(" ASSERT FAILED in "));
    log.take_all();
}

TEST_P(Assertion, OneThatHoldsSaysNothing)
{
    const LogCapture log;
    expect_went_on(subject().check(true), true);
    expect_went_on(subject().check_at(true), true);
    expect_went_on(subject().check_in(true), true);
    EXPECT_EQ("", log.text());
}

TEST(AssertionBuilds, AreBothThere)
{
    EXPECT_TRUE(subject_of_release.has_ndebug);
    EXPECT_FALSE(subject_of_debugging.has_ndebug);
    EXPECT_NE(subject_of_release.check, subject_of_debugging.check);
}

} // namespace
