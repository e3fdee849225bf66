#include "Load.h"

#include "support/App.h"
#include "support/LogCapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using load::Kind;
using load::Load;
using load::Options;
using load::Report;
using testing::IsEmpty;

// What is sent at once is taken in the sender's thread here, and the main thread takes posted messages only:
// no copy of a message goes from thread to thread inside Qt, where a race detector cannot see how it is
// handed over. LoadQueued is about such copies.

namespace {

/// Runs the load; the seeds of all runs change by what HK_LOAD_SEED says.
Report run(Options options)
{
    options.seed += qEnvironmentVariableIntValue("HK_LOAD_SEED");
    const support::App app;
    support::LogCapture log;
    Load load(options);
    const Report report = load.run();
    log.take_all();
    EXPECT_THAT(report.faults, IsEmpty()) << "seed " << options.seed;
    std::cout << "seed " << options.seed << '\n' << report;
    return report;
}

Options direct(unsigned long long seed)
{
    Options options;
    options.seed = seed;
    options.queued = false;
    return options;
}

Options queued(unsigned long long seed)
{
    Options options;
    options.seed = seed;
    return options;
}

/// Everything that can happen did.
void expect_all_kinds(const Report& report)
{
    for (unsigned kind = 0; kind < load::s_kinds; ++kind) {
        if (static_cast<Kind>(kind) != Kind::FatalText) {
            EXPECT_GT(report.row(std::string("steps: ") + load::name_of(static_cast<Kind>(kind))), 0u);
        }
    }
    EXPECT_GT(report.row("listings by the GUI"), 0u);
    EXPECT_EQ(report.row("histories compared with a sequential replay"), 8u);
    EXPECT_GT(report.row("log entries read whole"), 0u);
    EXPECT_EQ(report.row("log entries read whole"), report.row("log entries written"));
}

} // namespace

TEST(Load, EightThreadsLoseAndMixUpNothing)
{
    expect_all_kinds(run(direct(1)));
}

TEST(Load, NorDoTheyWithAnotherSeed)
{
    expect_all_kinds(run(direct(2)));
}

TEST(Load, OneThreadLosesAndMixesUpNothing)
{
    Options options = direct(3);
    options.threads = 1;
    options.steps = 3000;
    run(options);
}

TEST(Load, EveryOutermostMarkSendsBusyAndIdleOnce)
{
    Options options = direct(4);
    options.mix.foreign_marks = false;
    const Report report = run(options);
    EXPECT_EQ(report.row("steps: foreign mark"), 0u);
    EXPECT_GT(report.row("steps: marked"), 0u);
}

TEST(Load, FatalErrorAsTextCostsTheEntriesBeforeItOnly)
{
    Options options = direct(5);
    options.mix.undo = false;
    options.mix.fatal_text = 300;
    const Report report = run(options);
    EXPECT_EQ(report.row("steps: fatal error as text"), 1u);
    EXPECT_GT(report.row("log entries read whole"), 0u);
    EXPECT_LT(report.row("log entries read whole"), report.row("log entries written"));
}

TEST(LoadQueued, EightThreadsLoseAndMixUpNothing)
{
    expect_all_kinds(run(queued(6)));
}

TEST(LoadQueued, NorDoTheyWithAnotherSeed)
{
    expect_all_kinds(run(queued(7)));
}

TEST(LoadQueued, EveryOutermostMarkSendsBusyAndIdleOnce)
{
    Options options = queued(8);
    options.mix.foreign_marks = false;
    run(options);
}
