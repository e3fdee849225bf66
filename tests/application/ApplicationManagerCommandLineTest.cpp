#include "support/LogCapture.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// The command line as it came, with which the program can be started again.

namespace {

using namespace tarqa::housekeeping;
using support::LogCapture;
using support::StartedApplication;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> command_line()
{
    std::vector<std::string> words;
    for (const QString& word : ApplicationManager::command_line()) {
        words.push_back(word.toStdString());
    }
    return words;
}

} // namespace

TEST(ApplicationManagerCommandLine, IsEmptyBeforeTheStart)
{
    EXPECT_THAT(command_line(), IsEmpty());
    EXPECT_EQ(TestAccess::peek<ApplicationManager>(), nullptr); // and makes no manager
    ApplicationManager::instance();
    EXPECT_THAT(command_line(), IsEmpty());
}

TEST(ApplicationManagerCommandLine, HoldsQtsOwnOptionsToo)
{
    const StartedApplication started(
        true, {"-style", "fusion", "first", "-platform", "offscreen", "second file.tif", "", "%1"});
    EXPECT_THAT(started.arguments(), ElementsAre("test", "first", "second file.tif", "", "%1"));
    EXPECT_THAT(command_line(),
        ElementsAre(
            "test", "-style", "fusion", "first", "-platform", "offscreen", "second file.tif", "", "%1"));
}

TEST(ApplicationManagerCommandLine, HoldsAnyCharacter)
{
    const StartedApplication started(true, {u8"Größe.tif", u8"\u4e2d", "--option=\"quoted\""});
    EXPECT_THAT(command_line(), ElementsAre("test", u8"Größe.tif", u8"\u4e2d", "--option=\"quoted\""));
}

TEST(ApplicationManagerCommandLine, HoldsNothingThatNobodyEntered)
{
    qunsetenv("QT_QPA_PLATFORM"); // so that the start chooses a platform
    qunsetenv("DISPLAY");
    const StartedApplication started(false, {"--batch", "a file.tif"});
    EXPECT_THAT(command_line(), ElementsAre("test", "--batch", "a file.tif"));
}

TEST(ApplicationManagerCommandLine, DoesNotReferToTheHostsLater)
{
    std::string name = "test";
    std::string first = "first";
    char* arguments[] = {name.data(), first.data(), nullptr};
    char** p_arguments = arguments;
    int count = 2;
    LogCapture log;
    ApplicationManager::instance().init(count, p_arguments, "test", true);
    support::take_start_up_lines(log);
    first = "later";
    arguments[0] = arguments[1] = nullptr;
    EXPECT_THAT(command_line(), ElementsAre("test", "first"));
}

TEST(ApplicationManagerCommandLine, IsEmptyAfterTheEnd)
{
    {
        const StartedApplication started(true, {"first"});
        EXPECT_THAT(command_line(), ElementsAre("test", "first"));
    }
    EXPECT_THAT(command_line(), IsEmpty());
}
