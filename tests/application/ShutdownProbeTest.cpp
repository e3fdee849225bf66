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

/// Every singleton went in its phase, once, and none came back.
void expect_ordered_destruction(const Probe& probe)
{
    const std::string all_but_quick_help
        = "application threads handler log messages documents commands controllers";
    EXPECT_EQ(probe.fact("phase 4 begins"), all_but_quick_help + " quick-help");
    EXPECT_EQ(probe.fact("phase 4 ends"), all_but_quick_help);
    EXPECT_EQ(probe.fact("phase 5 begins"), all_but_quick_help);
    EXPECT_EQ(probe.fact("phase 5 ends"), "log messages"); // the log is the very last of its phase
    EXPECT_EQ(probe.fact("phase 6 begins"), "messages");
    EXPECT_EQ(probe.fact("phase 6 ends"), "nothing");
    const Lines destroyed = probe.facts("destroyed");
    EXPECT_THAT(
        destroyed, UnorderedElementsAre("quick-help", "application", "handler", "documents", "messages"));
    ASSERT_FALSE(destroyed.empty());
    EXPECT_EQ(destroyed.front(), "quick-help");
    EXPECT_EQ(destroyed.back(), "messages");
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
    run("relaunched", {"an argument", file});
    EXPECT_EQ(probe.fact("loop"), "ended");
    expect_ordinary_end();

    for (int i = 0; i < 600 && !fs::exists(file); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    const Lines second = lines(log_files::read(file));
    ASSERT_EQ(second.size(), 7u);
    EXPECT_EQ(second[1], second[0]); // the program's name, deliberately twice
    EXPECT_EQ(fs::path(second[0]).filename(), "shutdown_probe");
    EXPECT_EQ(second[2], "relaunched");
    EXPECT_EQ(second[3], "an argument");
    EXPECT_EQ(second[4], file);
    EXPECT_NE(second[5], probe.fact("process")); // not its child
    EXPECT_NE(second[6], probe.fact("session"));
}

/// Ten tests of twenty lives each, so that each stays short.
class ShutdownCycles : public testing::TestWithParam<int>
{ };

TEST_P(ShutdownCycles, EndWell)
{
    for (int i = 0; i < 20; ++i) {
        Probe probe;
        probe.launch({"cycle"});
        ASSERT_EQ(probe.finish(), 0) << "in round " << i << ": " << probe.error();
        EXPECT_EQ(probe.error(), "") << "in round " << i;
        expect_ordered_destruction(probe);
    }
}

INSTANTIATE_TEST_SUITE_P(TimeAndAgain, ShutdownCycles, testing::Range(0, 10));

} // namespace
