#include "BatchProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace host_test;
using testing::HasSubstr;

// What the program makes when it starts, and what only when somebody needs it. A plug-in that Qt loads into
// it looks when the first window has been painted, and asks for each of them then.

namespace {

class StartTest : public testing::Test
{
protected:
    /// Runs the program until its window is closed.
    void start()
    {
        process.set_variable("QT_QPA_PLATFORM", "offscreen");
        process.set_variable("QT_PLUGIN_PATH", START_WATCH_PLUGINS);
        process.set_variable("QT_QPA_GENERIC_PLUGINS", "start-watch");
        process.start({});
        EXPECT_EQ(process.finish(), 0) << process.error();
        ++starts;
        started = line("started: ");
        needed = line("needed: ");
        EXPECT_THAT(started, HasSubstr(" 1 main windows,")) << process.out();
        EXPECT_THAT(needed, HasSubstr(" 2 main windows,")) << "that of the help, too: " << process.out();
    }

    std::string line(const std::string& when) const
    {
        const std::vector<std::string> lines = lines_with(process.out(), when);
        EXPECT_EQ(lines.size(), starts) << process.out();
        return lines.empty() ? "" : lines.back();
    }

    BatchProcess process;
    std::size_t starts = 0;
    std::string started;
    std::string needed;
};

} // namespace

TEST_F(StartTest, NoQmlEngineIsMadeBeforeQuickHelpIsSeen)
{
    start();
    EXPECT_THAT(started, HasSubstr(" 0 QML engines,"));
    EXPECT_THAT(needed, HasSubstr(" 1 QML engines,"));
}

TEST_F(StartTest, NoWebPageIsMadeBeforeThereIsHelp)
{
    start();
    EXPECT_THAT(started, HasSubstr(" 0 web pages,"));
    EXPECT_THAT(needed, HasSubstr(" 1 web pages,"));
}

TEST_F(StartTest, NoPlugInOfOpenSceneGraphIsLoadedBeforeItIsAskedFor)
{
    start();
    EXPECT_THAT(started, HasSubstr(" 0 scene plug-ins"));
    EXPECT_THAT(needed, HasSubstr(" 1 scene plug-ins"));
}

TEST_F(StartTest, AStartWithSettingsMakesNoMore)
{
    start(); // which leaves them
    start();
    EXPECT_EQ(started, "started: 1 main windows, 0 QML engines, 0 web pages, 0 scene plug-ins");
}
