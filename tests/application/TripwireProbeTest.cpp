#include "Probe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// Runs of tripwire_probe: what the tripwire says of a host that breaks the rules about locks, and that it
// waits all the same.

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

typedef std::vector<std::string> Options;

std::string between(const std::string& text, const std::string& start, const std::string& end)
{
    const std::size_t at = text.find(start);
    if (at == std::string::npos) {
        return "no " + start;
    }
    const std::size_t from = at + start.size();
    const std::size_t to = text.find(end, from);
    return to == std::string::npos ? "no " + end : text.substr(from, to - from);
}

/// A host with the tripwire that stands still and has said so.
class StandingHost : public Probe
{
public:
    /// @param last with what the tripwire's words end
    explicit StandingHost(const Options& options, const std::string& last = "\nRule: ")
    {
        EXPECT_TRUE(start(options)) << error();
        EXPECT_TRUE(wait_for_error(last)) << error();
        EXPECT_TRUE(wait_for_fact("waits")) << "does not wait";
        EXPECT_TRUE(wait_for_error(last + between(error(), last, "\n"))) << error();
        kill_it();
    }
    std::string held_since() const { return between(error(), " has held since:\n", "Asked again from:\n"); }
    std::string asked_from() const { return between(error(), "Asked again from:\n", "Rule: "); }
    std::string rule() const { return between(error(), "\nRule: ", "\n"); }
};

/// That the words name both places: where it was taken and where it was asked for.
void expect_both_places(const StandingHost& host, const std::string& taken_by, const std::string& asked_by)
{
    EXPECT_THAT(host.held_since(), StartsWith("  tarqa::housekeeping::" + taken_by));
    EXPECT_THAT(host.held_since(), HasSubstr("\n  the_function_that_takes_it  ["));
    EXPECT_THAT(host.held_since(), Not(HasSubstr("the_function_that_asks_again")));
    EXPECT_THAT(host.asked_from(), StartsWith("  tarqa::housekeeping::" + asked_by));
    EXPECT_THAT(host.asked_from(), HasSubstr("\n  the_function_that_asks_again  ["));
}

} // namespace

// A thread that waits for itself

struct SelfBlock
{
    const char* way;
    const char* mutex;
    const char* taken_by;
    const char* asked_by;
    const char* rule; // a part of it
};

void PrintTo(const SelfBlock& block, std::ostream* stream)
{
    *stream << block.way;
}

class TripwireNames : public testing::TestWithParam<SelfBlock>
{ };

TEST_P(TripwireNames, WhatWaitsForItself)
{
    const SelfBlock& block = GetParam();
    const StandingHost host({block.way, "on"});
    const std::string thread = between(host.error(), "TRIPWIRE: thread ", " ");
    EXPECT_THAT(host.error(),
        StartsWith("TRIPWIRE: thread " + thread + " (the main thread) waits for itself, for ever.\nThread "
            + thread + " (the main thread) asks for " + block.mutex + ", which it has held since:\n"));
    expect_both_places(host, block.taken_by, block.asked_by);
    EXPECT_THAT(host.rule(), AllOf(HasSubstr(block.rule), EndsWith(".")));
    EXPECT_THAT(host.entries(), Not(HasSubstr("TRIPWIRE")));
}

INSTANTIATE_TEST_SUITE_P(Rules, TripwireNames,
    testing::Values(SelfBlock{"insert", "the command manager's mutex", "CommandManager::insert(",
                        "CommandManager::insert(", "CompositeCommand"},
        SelfBlock{"undo", "the command manager's mutex", "CommandManager::insert(", "CommandManager::undo(",
            "CompositeCommand"},
        SelfBlock{"redo", "the command manager's mutex", "CommandManager::insert(", "CommandManager::redo(",
            "CompositeCommand"},
        SelfBlock{"message", "the command manager's mutex", "CommandManager::insert(",
            "CommandManager::insert(", "subscriber of the messages of its run"},
        SelfBlock{"create", "the mutex of the document manager's registry",
            "DocumentManager::create_document(", "DocumentManager::create_document(",
            "subscriber of Created"},
        SelfBlock{"destroy", "the mutex of the document manager's registry",
            "DocumentManager::create_document(", "DocumentManager::drop_document(", "destroys"},
        SelfBlock{"post", "the message handler's mutex", "MessageHandler::idleTimeout(",
            "MessageHandler::post(", "posts nothing"}),
    [](const auto& param) { return param.param.way; });

TEST(Tripwire, NamesTheRunAndItsDocument)
{
    const StandingHost host({"insert", "on"}, "\nRunning: ");
    EXPECT_THAT(host.error(), HasSubstr("\nRunning: do " + host.fact("command")));
}

TEST(Tripwire, NamesNoRunThatHasEnded)
{
    const StandingHost host({"create", "on"});
    EXPECT_THAT(host.error(), Not(HasSubstr("Running: ")));
}

TEST(Tripwire, TellsAWorkerFromTheMainThread)
{
    const StandingHost host({"insert", "on", "worker"});
    EXPECT_THAT(host.error(), HasSubstr(" waits for itself, for ever.\n"));
    EXPECT_THAT(host.error(), Not(HasSubstr("the main thread) ")));
}

TEST(Tripwire, IsSwitchedOnByTheEnvironment)
{
    for (const char* value : {"1", "yes"}) {
        Probe probe;
        probe.set("TARQ_TRIPWIRE", value);
        ASSERT_TRUE(probe.start({"insert"})) << probe.error();
        EXPECT_EQ(probe.fact("enabled"), "1");
        EXPECT_TRUE(probe.wait_for_error("waits for itself")) << probe.error();
    }
}

TEST(Tripwire, StaysOffInTheEnvironment)
{
    for (const char* value : {"", "0"}) {
        Probe probe;
        probe.set("TARQ_TRIPWIRE", value);
        ASSERT_TRUE(probe.start({"insert"})) << probe.error();
        EXPECT_EQ(probe.fact("enabled"), "0");
        EXPECT_TRUE(probe.wait_for_fact("waits"));
        EXPECT_THAT(probe.error(), IsEmpty());
    }
}

TEST(Tripwire, LeavesTheLastWordToTheHost)
{
    Probe probe;
    probe.set("TARQ_TRIPWIRE", "1");
    ASSERT_TRUE(probe.start({"insert", "disabled"})) << probe.error();
    EXPECT_EQ(probe.fact("enabled"), "0");
    EXPECT_TRUE(probe.wait_for_fact("waits"));
    EXPECT_THAT(probe.error(), IsEmpty());
}

// Threads that wait for each other

TEST(Tripwire, NamesTwoThreadsThatWaitForEachOther)
{
    const StandingHost host({"two", "on"}, "\nRunning: ");
    const std::string& text = host.error();
    const std::string main = between(text, "for ever.\nThread ", " (the main thread) asks");
    const std::string worker = between(text, "mutex, which thread ", " has held since:\n");
    EXPECT_NE(main, worker);
    EXPECT_THAT(text, StartsWith("TRIPWIRE: 2 threads wait for each other, for ever.\n"));
    const std::size_t second
        = text.find("\nThread " + worker + " asks for the message handler's mutex, which thread " + main
            + " (the main thread) has held since:\n");
    ASSERT_NE(second, std::string::npos) << text;
    const std::string of_main = text.substr(0, second);
    const std::string of_worker = text.substr(second);
    EXPECT_THAT(of_main,
        HasSubstr("\nThread " + main + " (the main thread) asks for the command manager's mutex, which "));
    for (const std::string& one : {of_main, of_worker}) {
        EXPECT_THAT(between(one, " has held since:\n", "Asked from:\n"),
            HasSubstr("\n  the_function_that_takes_it  ["));
        EXPECT_THAT(
            between(one, "Asked from:\n", "Rule: "), HasSubstr("\n  the_function_that_asks_again  ["));
    }
    EXPECT_THAT(of_main, HasSubstr("\nRule: neither a command nor a subscriber "));
    EXPECT_THAT(of_worker, HasSubstr("\nRule: a slot that is reached from a posted message "));
    EXPECT_THAT(of_main, Not(HasSubstr("\nRunning: ")));
    EXPECT_THAT(of_worker, HasSubstr("\nRunning: do of command "));
}

TEST(Tripwire, NamesACommandThatAsksForTheControllerOfWhoWaitsForIt)
{
    Probe probe;
    ASSERT_TRUE(probe.start({"controller", "on"})) << probe.error();
    EXPECT_TRUE(probe.wait_for_error("TRIPWIRE: 2 threads wait for each other, for ever.\n"))
        << probe.error();
    EXPECT_TRUE(probe.wait_for_error("commands and slots of posted messages lock no controller"))
        << probe.error();
    EXPECT_THAT(probe.error(), HasSubstr(" asks for a controller's lock, which thread "));
    EXPECT_THAT(probe.error(), HasSubstr("\n  tarqa::housekeeping::AbstractController::acquire()  ["));
}

TEST(Tripwire, NamesWhatTheMainThreadWaitsForLong)
{
    const StandingHost host({"long", "on"}, "\nRunning: ");
    const std::string& text = host.error();
    EXPECT_THAT(text, StartsWith("TRIPWIRE: the main thread has waited for more than a second.\nThread "));
    EXPECT_THAT(text, HasSubstr(" (the main thread) asks for the command manager's mutex, which thread "));
    const std::string held = between(text, " has held since:\n", "Asked from:\n");
    EXPECT_THAT(held, HasSubstr("\n  the_function_that_takes_it  ["));
    EXPECT_THAT(between(text, "Asked from:\n", "Rule: "), HasSubstr("\n  the_function_that_asks_again  ["));
    EXPECT_THAT(text, HasSubstr("while a worker's run is on.\nRunning: do " + host.fact("command")));
}

TEST(Tripwire, NamesTheMainThreadThatWaitsForWhatItDidNotSee)
{
    const StandingHost host({"insert", "late"}); // for itself, but that was before the tripwire's time
    EXPECT_THAT(host.error(), StartsWith("TRIPWIRE: the main thread has waited for more than a second.\n"));
    EXPECT_THAT(host.error(),
        HasSubstr("asks for the command manager's mutex, which was locked when the tripwire was off.\nAsked "
                  "from:\n"));
    EXPECT_THAT(host.error(), HasSubstr("\n  the_function_that_asks_again  ["));
}

// The log

class TripwireOfTheLog : public testing::TestWithParam<std::string>
{ };

TEST_P(TripwireOfTheLog, NamesWhatIsLoggedBesideAStream)
{
    Probe off;
    ASSERT_TRUE(off.start({GetParam()})) << off.error();
    EXPECT_EQ(off.finish(), 0);
    EXPECT_EQ(off.error(), "the inner entry\n");
    Probe on;
    ASSERT_TRUE(on.start({GetParam(), "on"})) << on.error();
    EXPECT_EQ(on.finish(), 0);
    EXPECT_THAT(on.error(),
        AllOf(StartsWith("TRIPWIRE: thread "),
            HasSubstr(" (the main thread) would wait for itself: what it logs goes to the standard error "
                      "stream.\n"),
            HasSubstr(" asks for the error log's mutex, which it has held since:\n"),
            EndsWith("keep it to one statement.\nthe inner entry\n")));
    EXPECT_THAT(between(on.error(), "held since:\n", "Asked again from:\n"),
        AllOf(StartsWith("  tarqa::housekeeping::ErrorProtocolOutput::ErrorProtocolOutput()  ["),
            HasSubstr("\n  the_function_that_takes_it  [")));
    EXPECT_THAT(between(on.error(), "Asked again from:\n", "Rule: "),
        AllOf(HasSubstr("  tarqa::housekeeping::ErrorProtocol"),
            HasSubstr("\n  the_function_that_asks_again  [")));
    EXPECT_EQ(on.entries(), off.entries());
    EXPECT_THAT(on.entries(), EndsWith("the outer entry\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, TripwireOfTheLog, testing::Values("log", "stream"), [](const auto& param) { return param.param; });

TEST(Tripwire, DoesNotKnowAStreamThatIsOlder)
{
    Probe probe;
    ASSERT_TRUE(probe.start({"log", "late"})) << probe.error();
    EXPECT_EQ(probe.finish(), 0);
    EXPECT_EQ(probe.error(), "the inner entry\n");
}

// What is allowed, and without the tripwire

TEST(Tripwire, SaysNothingOfAHostThatKeepsTheRules)
{
    for (const Options& options : {Options{"allowed", "on"}, Options{"nothing", "on"}, Options{"allowed"}}) {
        Probe probe;
        ASSERT_TRUE(probe.start(options)) << probe.error();
        EXPECT_EQ(probe.finish(), 0);
        EXPECT_THAT(probe.error(), IsEmpty());
    }
}

class TripwireOff : public testing::TestWithParam<std::string>
{ };

TEST_P(TripwireOff, LeavesTheHostWaitingInSilence)
{
    for (const Options& options : {Options{GetParam()}, Options{GetParam(), "on", "disabled"}}) {
        Probe probe;
        ASSERT_TRUE(probe.start(options)) << probe.error();
        EXPECT_EQ(probe.fact("enabled"), "0");
        EXPECT_TRUE(probe.wait_for_fact("waits"));
        EXPECT_THAT(probe.error(), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, TripwireOff,
    testing::Values("insert", "undo", "redo", "message", "create", "destroy", "post"),
    [](const auto& param) { return param.param; });
