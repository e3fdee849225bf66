#include "CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using terrain::CommandLine;
using testing::ElementsAre;
using testing::IsEmpty;

typedef CommandLine::Task Task;

TEST(CommandLine, WithoutOptionsAWindowShowsTheFiles)
{
    const auto none = CommandLine::parse({});
    ASSERT_TRUE(none);
    EXPECT_EQ(none->task, Task::Window);
    EXPECT_THAT(none->files, IsEmpty());
    const auto two = CommandLine::parse({"a.tif", "b c.tif"});
    ASSERT_TRUE(two);
    EXPECT_EQ(two->task, Task::Window);
    EXPECT_THAT(two->files, ElementsAre("a.tif", "b c.tif"));
}

TEST(CommandLine, ABatchHasAScriptAndFiles)
{
    const auto line = CommandLine::parse({"--batch", "-", "a.tif", "b.tif"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->task, Task::Batch);
    EXPECT_EQ(line->script, "-");
    EXPECT_THAT(line->files, ElementsAre("a.tif", "b.tif"));
}

TEST(CommandLine, ATourHasAFolderAndPerhapsAFile)
{
    const auto line = CommandLine::parse({"--tour", "pictures", "a.tif"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->task, Task::Tour);
    EXPECT_EQ(line->folder, "pictures");
    EXPECT_THAT(line->files, ElementsAre("a.tif"));
    EXPECT_THAT(CommandLine::parse({"--tour", "pictures"})->files, IsEmpty());
}

TEST(CommandLine, HelpAndVersionStandAlone)
{
    EXPECT_EQ(CommandLine::parse({"--help"})->task, Task::Help);
    EXPECT_EQ(CommandLine::parse({"--version"})->task, Task::Version);
    EXPECT_FALSE(CommandLine::parse({"--help", "me"}));
    EXPECT_FALSE(CommandLine::parse({"--version", "2"}));
}

TEST(CommandLine, ALanguageMayStandInFrontOfAllElse)
{
    EXPECT_EQ(CommandLine::parse({})->language, "");
    EXPECT_EQ(CommandLine::parse({"--language", "de"})->language, "de");
    const auto batch = CommandLine::parse({"--language", "pseudo", "--batch", "-", "--language"});
    ASSERT_TRUE(batch);
    EXPECT_EQ(batch->task, Task::Batch);
    EXPECT_EQ(batch->language, "pseudo");
    EXPECT_THAT(batch->files, ElementsAre("--language"));
    EXPECT_FALSE(CommandLine::parse({"--language"}));
    EXPECT_FALSE(CommandLine::parse({"--language", ""}));
    EXPECT_FALSE(CommandLine::parse({"--language", "--help"}));
    EXPECT_FALSE(CommandLine::parse({"a.tif", "--language", "de"}));
}

TEST(CommandLine, EverythingElseIsWrongUsage)
{
    EXPECT_FALSE(CommandLine::parse({"--batch"}));
    EXPECT_FALSE(CommandLine::parse({"a.tif", "--batch", "script"}));
    EXPECT_FALSE(CommandLine::parse({"--batsch", "script"}));
    EXPECT_FALSE(CommandLine::parse({"--tour"}));
    EXPECT_FALSE(CommandLine::parse({"--tour", "--help"}));
    EXPECT_FALSE(CommandLine::parse({"--tour", "pictures", "a.tif", "b.tif"}));
    EXPECT_FALSE(CommandLine::parse({"--tour", "pictures", "--batch"}));
    EXPECT_FALSE(CommandLine::parse({"-x"}));
}

TEST(CommandLine, TheUsageNamesAllTasks)
{
    for (const char* word :
        {"tarq-terrain [FILE...]", "--batch SCRIPT", "--tour DIR [FILE]", "--help", "--version"}) {
        EXPECT_THAT(CommandLine::usage(), testing::HasSubstr(word));
    }
}
