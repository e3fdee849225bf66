#include <pkBase/pkDestructor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using pkBase::pkDestructionPhase;
using pkBase::pkDestructor;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::string> s_calls;
std::atomic<int> s_counted{0};
const pkDestructor s_entered_before_main(pkDestructionPhase(1), [] { s_calls.push_back("before main"); });

void enter(int phase, pkDestructor::Function function)
{
    pkDestructor(pkDestructionPhase(phase), function);
}

void call_a()
{
    s_calls.push_back("a");
}

void call_b()
{
    s_calls.push_back("b");
}

void call_c()
{
    s_calls.push_back("c");
}

void count()
{
    ++s_counted;
}

/// The calls of a run, without the one that was entered before main.
std::vector<std::string> run()
{
    s_calls.clear();
    pkDestructor::run();
    std::vector<std::string> calls = s_calls;
    if (!calls.empty() && calls.front() == "before main") {
        calls.erase(calls.begin());
    }
    return calls;
}

} // namespace

TEST(pkDestructionPhase, KeepsItsNumber)
{
    constexpr pkDestructionPhase phase(5);
    EXPECT_EQ(phase.number(), 5);
    EXPECT_EQ(pkDestructionPhase(-1).number(), -1);
}

TEST(pkDestructor, CallsLowerPhasesFirst)
{
    enter(6, &call_b);
    enter(7, &call_c);
    enter(4, &call_a);
    EXPECT_THAT(run(), ElementsAre("a", "b", "c"));
}

TEST(pkDestructor, TakesAnyNumberForAPhase)
{
    enter(std::numeric_limits<int>::max(), &call_c);
    enter(2, &call_b);
    enter(std::numeric_limits<int>::min(), &call_a);
    s_calls.clear();
    pkDestructor::run();
    EXPECT_THAT(s_calls, ElementsAre("a", "before main", "b", "c"));
}

TEST(pkDestructor, CallsTheLastEnteredOfAPhaseFirst)
{
    enter(5, &call_a);
    enter(5, &call_b);
    enter(5, &call_c);
    EXPECT_THAT(run(), ElementsAre("c", "b", "a"));
}

TEST(pkDestructor, CallsAFunctionAsOftenAsItWasEntered)
{
    enter(5, &call_a);
    enter(6, &call_a);
    enter(5, &call_a);
    EXPECT_THAT(run(), ElementsAre("a", "a", "a"));
}

TEST(pkDestructor, CallsNothingBeforeItIsRun)
{
    enter(5, &call_a);
    EXPECT_THAT(s_calls, IsEmpty());
}

TEST(pkDestructor, TakesEntriesBeforeMain)
{
    pkDestructor::run();
    EXPECT_THAT(s_calls, ElementsAre("before main"));
}

TEST(pkDestructor, SecondRunCallsNothing)
{
    enter(5, &call_a);
    EXPECT_THAT(run(), ElementsAre("a"));
    EXPECT_THAT(run(), IsEmpty());
}

TEST(pkDestructor, RunsAgainWhatWasEnteredSince)
{
    enter(5, &call_a);
    run();
    enter(5, &call_b);
    EXPECT_THAT(run(), ElementsAre("b"));
}

TEST(pkDestructor, IgnoresNull)
{
    enter(5, nullptr);
    EXPECT_THAT(run(), IsEmpty());
    enter(5, &call_a);
    enter(5, nullptr);
    EXPECT_THAT(run(), ElementsAre("a"));
}

TEST(pkDestructor, CallsWhatIsEnteredWhileItRuns)
{
    enter(5, [] {
        call_a();
        enter(5, &call_b);
        enter(3, &call_c); // an earlier phase: next of all
    });
    enter(6, &call_a);
    EXPECT_THAT(run(), ElementsAre("a", "c", "b", "a"));
}

TEST(pkDestructor, GoesOnAfterAnException)
{
    enter(5, &call_c);
    enter(5, [] { throw std::runtime_error("broken destructor"); });
    enter(4, [] { throw 42; });
    enter(3, &call_a);
    testing::internal::CaptureStderr();
    const std::vector<std::string> calls = run();
    const std::string output = testing::internal::GetCapturedStderr();
    EXPECT_EQ(output,
        "An unknown exception escaped from an ordered destruction\n"
        "An exception escaped from an ordered destruction: broken destructor\n");
    EXPECT_THAT(calls, ElementsAre("a", "c"));
}

TEST(pkDestructor, NestedRunReturnsAtOnce)
{
    enter(5, &call_b);
    enter(5, [] {
        pkDestructor::run();
        call_a();
    });
    EXPECT_THAT(run(), ElementsAre("a", "b"));
}

TEST(pkDestructor, TakesEntriesOfManyThreads)
{
    const int threads = 8;
    const int each = 1000;
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back([i] {
            for (int k = 0; k < each; ++k) {
                enter(i % 3, &count);
            }
        });
    }
    for (std::thread& thread : running) {
        thread.join();
    }
    pkDestructor::run();
    EXPECT_EQ(s_counted, threads * each);
}

namespace {

void say(const char* text)
{
    std::fputs(text, stderr);
}

[[noreturn]] void exit_armed(int times)
{
    enter(6, [] { say("second;"); });
    enter(5, [] { say("first;"); });
    for (int i = 0; i < times; ++i) {
        pkDestructor::run_at_exit();
    }
    say("exiting;");
    std::exit(0);
}

} // namespace

TEST(pkDestructor, RunsAtExitWhenArmed)
{
    EXPECT_EXIT(exit_armed(1), testing::ExitedWithCode(0), "exiting;first;second;$");
}

TEST(pkDestructor, ArmedTwiceRunsOnceAtExit)
{
    const auto arm_twice = [] {
        pkDestructor::run_at_exit();
        // Runs between the two if there were two; what it enters would be called by the earlier one.
        std::atexit([] { say("between;"); });
        pkDestructor::run_at_exit();
        enter(5, [] { say("entry;"); });
        std::exit(0);
    };
    EXPECT_EXIT(arm_twice(), testing::ExitedWithCode(0), "between;entry;$");
}

TEST(pkDestructor, ExitInAnotherThreadDestroysNothing)
{
    const auto exit_in_a_worker = [] {
        pkDestructor::run_at_exit();
        enter(5, [] { say("entry;"); });
        std::thread([] {
            say("exiting;");
            std::exit(7);
        }).join();
    };
    EXPECT_EXIT(exit_in_a_worker(), testing::ExitedWithCode(7), "exiting;$");
}

TEST(pkDestructor, IsNotRunAtExitUnlessArmed)
{
    EXPECT_EXIT(exit_armed(0), testing::ExitedWithCode(0), "exiting;$");
}

TEST(pkDestructor, AtExitCallsOnlyWhatIsLeft)
{
    const auto run_before = [] {
        pkDestructor::run_at_exit();
        enter(5, [] { say("entry;"); });
        pkDestructor::run();
        say("exiting;");
        std::exit(0);
    };
    EXPECT_EXIT(run_before(), testing::ExitedWithCode(0), "entry;exiting;$");
}
