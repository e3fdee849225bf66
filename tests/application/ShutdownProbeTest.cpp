#include "LogFiles.h"
#include "Probe.h"
#include "support/PrivateHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

// Runs of shutdown_probe: what is left in which phase, and in the error log.

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAre;

typedef std::vector<std::string> Lines;

const std::string s_banner = "************** END OF ERROR LOG ***************\n";

int count(const std::string& text, const std::string& part)
{
    int found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

Lines lines(const std::string& text)
{
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

Lines log_files_of_the_probe()
{
    Lines names;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(Probe::log_directory(), none)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string log_of_the_probe()
{
    return log_files::read(Probe::log_directory() + "/Tarq_1.log");
}

/// One log file, and the closing banner in it once, as its last line.
void expect_one_closed_log()
{
    EXPECT_THAT(log_files_of_the_probe(), ElementsAre("Tarq_1.log"));
    EXPECT_THAT(log_of_the_probe(), EndsWith(s_banner));
    EXPECT_EQ(count(log_of_the_probe(), "END OF ERROR LOG"), 1);
}

/// In each of the probe's lives every singleton went in its phase, once, and none came back.
void expect_ordered_destruction(const Probe& probe, std::size_t lives = 1)
{
    const std::string all_but_quick_help
        = "application threads handler log messages documents commands controllers";
    const auto each_time = [&](const std::string& living) { return Lines(lives, living); };
    EXPECT_EQ(probe.facts("phase 4 begins"), each_time(all_but_quick_help + " quick-help"));
    EXPECT_EQ(probe.facts("phase 4 ends"), each_time(all_but_quick_help));
    EXPECT_EQ(probe.facts("phase 5 begins"), each_time(all_but_quick_help));
    // The log is the very last of its phase.
    EXPECT_EQ(probe.facts("phase 5 ends"), each_time("log messages"));
    EXPECT_EQ(probe.facts("phase 6 begins"), each_time("messages"));
    EXPECT_EQ(probe.facts("phase 6 ends"), each_time("nothing"));

    const Lines destroyed = probe.facts("destroyed");
    const std::size_t objects = 5;
    ASSERT_EQ(destroyed.size(), lives * objects);
    for (auto life = destroyed.begin(); life != destroyed.end(); life += objects) {
        EXPECT_THAT(Lines(life, life + objects),
            UnorderedElementsAre("quick-help", "application", "handler", "documents", "messages"));
        EXPECT_EQ(*life, "quick-help");
        EXPECT_EQ(*(life + objects - 1), "messages");
    }
}

/// A run of the probe that is expected to end well.
class ShutdownProbe : public testing::Test
{
protected:
    void run(const std::string& way, const Lines& more = {})
    {
        Lines arguments = {way};
        arguments.insert(arguments.end(), more.begin(), more.end());
        probe.launch(arguments);
        ASSERT_EQ(probe.finish(), 0) << probe.error();
    }

    /// Everything as it should be after an ordinary end.
    void expect_ordinary_end() const
    {
        expect_ordered_destruction(probe);
        EXPECT_EQ(probe.fact("left"), "nothing");
        EXPECT_EQ(probe.error(), "");
        expect_one_closed_log();
        EXPECT_THAT(log_of_the_probe(), HasSubstr("the host's entry\n"));
        EXPECT_THAT(log_of_the_probe(), Not(HasSubstr("ASSERT FAILED")));
    }

    Probe probe;
};

TEST_F(ShutdownProbe, EndsAfterItsLoop)
{
    run("looped");
    EXPECT_EQ(probe.fact("loop"), "ended");
    expect_ordinary_end();
}

TEST_F(ShutdownProbe, EndsWithAWindowThatWasNeverShown)
{
    run("never-shown");
    EXPECT_EQ(probe.fact("loop"), "ended");
    expect_ordinary_end();
}

TEST_F(ShutdownProbe, EndsWithoutALoop)
{
    run("never-looped");
    expect_ordinary_end();
}

TEST_F(ShutdownProbe, EndsWithoutWindows)
{
    run("without-windows");
    expect_ordinary_end();
}

TEST_F(ShutdownProbe, EndsWithoutAStart)
{
    run("instance-only");
    EXPECT_EQ(probe.fact("phase 4 begins"), "application threads handler");
    EXPECT_EQ(probe.fact("left"), "nothing");
    EXPECT_EQ(probe.error(), "");
    EXPECT_THAT(log_files_of_the_probe(), ElementsAre()); // nothing was ever logged
}

TEST_F(ShutdownProbe, EndsAtExitWhenTheHostForgetsTo)
{
    run("forgets-to-run");
    EXPECT_EQ(probe.fact("loop"), "ended");
    expect_ordered_destruction(probe);
    EXPECT_EQ(probe.error(), "");
    expect_one_closed_log();
}

TEST_F(ShutdownProbe, EndsOnce)
{
    run("runs-twice");
    EXPECT_EQ(probe.fact("left after the second run"), "nothing");
    expect_ordinary_end();
}

TEST_F(ShutdownProbe, PostedMessagesAreNotDelivered)
{
    run("posted-messages");
    EXPECT_EQ(probe.fact("messages delivered"), "0");
    expect_ordinary_end();
}

TEST_F(ShutdownProbe, OpenDocumentsAndTheirCommandsGo)
{
    run("documents");
    EXPECT_EQ(probe.fact("documents destroyed"), "2");
    EXPECT_EQ(probe.fact("commands left"), "0");
    expect_ordinary_end();
}

TEST_F(ShutdownProbe, WindowThatTheHostForgetsIsNoTrouble)
{
    run("window");
    expect_ordinary_end();
}

TEST_F(ShutdownProbe, LastWordsMakeNoSecondLog)
{
    run("last-words");
    expect_ordinary_end();
    EXPECT_THAT(log_of_the_probe(), Not(HasSubstr("last words")));
}

TEST_F(ShutdownProbe, TasksOfThePoolAreWaitedForAndBringNothingBack)
{
    run("busy-pool");
    EXPECT_EQ(probe.fact("task finds"), "the manager");
    expect_ordinary_end();
}

// The process is ended without a word to the framework

TEST_F(ShutdownProbe, ExitInsideTheLoopEndsInOrder)
{
    probe.launch({"exits-in-its-loop"});
    EXPECT_EQ(probe.finish(), 7) << probe.error();
    EXPECT_THAT(probe.facts("loop"), ElementsAre());
    expect_ordered_destruction(probe);
    EXPECT_EQ(probe.error(), "");
    expect_one_closed_log();
}

TEST_F(ShutdownProbe, ExitInAWorkerDestroysNothingThere)
{
    probe.launch({"exits-in-a-worker"});
    EXPECT_EQ(probe.finish(), 7) << probe.error();
    EXPECT_THAT(probe.facts("phase 4 ends"), ElementsAre());
    EXPECT_THAT(probe.facts("destroyed"), ElementsAre());
    EXPECT_EQ(probe.error(), "");
    EXPECT_THAT(log_of_the_probe(), EndsWith("the host's entry\n"));
}

// Fatal errors in a worker, while the loop runs

TEST_F(ShutdownProbe, FatalTextEndsTheLoopAndStandsAloneInTheLog)
{
    run("fatal-text");
    EXPECT_EQ(probe.fact("loop"), "ended");
    expect_ordered_destruction(probe);
    EXPECT_EQ(log_of_the_probe(), "FATAL ERROR!\nFurther Information: the end\n\n" + s_banner);
    EXPECT_THAT(log_files_of_the_probe(), ElementsAre("Tarq_1.log"));
    EXPECT_THAT(probe.error(), HasSubstr("Detail: the end\n"));
}

TEST_F(ShutdownProbe, FatalExceptionEndsTheLoop)
{
    run("fatal-exception");
    EXPECT_EQ(probe.fact("loop"), "ended");
    expect_ordered_destruction(probe);
    expect_one_closed_log();
    EXPECT_THAT(log_of_the_probe(),
        HasSubstr("the host's entry\nfatal error!\nCause: tarqa::Exception\nFurther Information: "));
    EXPECT_THAT(probe.error(), HasSubstr("Detail: A C++ fatal error has occured : \n"));
}

TEST_F(ShutdownProbe, FatalStandardExceptionEndsTheLoop)
{
    run("fatal-standard-exception");
    EXPECT_EQ(probe.fact("loop"), "ended");
    expect_ordered_destruction(probe);
    expect_one_closed_log();
    EXPECT_THAT(log_of_the_probe(),
        EndsWith("the host's entry\nFATAL ERROR!\nCause: std::exception\nFurther Information: the end\n"
            + s_banner));
    EXPECT_THAT(
        probe.error(), HasSubstr("Detail: An Exception creating a fatal error has occured : the end\n"));
}

// Again and again

TEST_F(ShutdownProbe, RelaunchStartsADetachedProcessWithAllArguments)
{
    const std::string file = support::PrivateHome::scratch_directory() + "/second process";
    run("relaunched", {"-platform", "offscreen", "an argument", file}); // Qt's own options too
    EXPECT_EQ(probe.fact("loop"), "ended");
    expect_ordinary_end();

    for (int i = 0; i < 600 && !fs::exists(file); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    const Lines second = lines(log_files::read(file));
    ASSERT_EQ(second.size(), 9u);
    EXPECT_EQ(fs::path(second[0]).filename(), "shutdown_probe");
    EXPECT_THAT(Lines(second.begin() + 1, second.begin() + 7),
        ElementsAre(second[0], // the program's name, deliberately twice
            "relaunched", "-platform", "offscreen", "an argument", file));
    EXPECT_NE(second[7], probe.fact("process")); // not its child
    EXPECT_NE(second[8], probe.fact("session"));
}

/// Ten tests of twenty lives each, so that each stays short.
class ShutdownCycles : public testing::TestWithParam<int>
{ };

TEST_P(ShutdownCycles, EndWell)
{
    Probe probe;
    probe.launch({"cycles"});
    EXPECT_EQ(probe.finish(), 0) << probe.error();
    EXPECT_EQ(probe.error(), "");
    expect_ordered_destruction(probe, 20);
}

INSTANTIATE_TEST_SUITE_P(TimeAndAgain, ShutdownCycles, testing::Range(0, 10));

} // namespace
