#include "LockFiles.h"
#include "Probe.h"

#include <QtCore/QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

const char* const s_lock_name = "/Tarq-a5cf-1f-lockfile"; // of the session 31, which probes are in

std::string lock_file()
{
    return QDir::tempPath().toStdString() + s_lock_name;
}

/// Two that start at the same time, each living in a temporary directory of its own.
void start_two_together()
{
    const std::string stale = lock_files::abandoned_directory("vista");
    Probe first;
    Probe second;
    first.launch({"--batch", "--temporary"});
    second.launch({"--batch", "--temporary"});
    ASSERT_TRUE(first.wait_until_ready()) << first.error();
    ASSERT_TRUE(second.wait_until_ready()) << second.error();

    EXPECT_NE(first.fact("log"), second.fact("log"));
    const bool first_holds = first.held_lock() == lock_file();
    const bool second_holds = second.held_lock() == lock_file();
    EXPECT_NE(first_holds, second_holds);
    EXPECT_TRUE(fs::exists(first.fact("temporary")));
    EXPECT_TRUE(fs::exists(second.fact("temporary")));
    EXPECT_FALSE(fs::exists(stale));

    EXPECT_EQ(first.finish(), 0);
    EXPECT_EQ(second.finish(), 0);
    EXPECT_EQ(first.entries(), second.entries());
    EXPECT_FALSE(fs::exists(first.fact("temporary")));
    EXPECT_FALSE(fs::exists(second.fact("temporary")));
    EXPECT_TRUE(lock_files::is_free(lock_file()));
    fs::remove_all(Probe::log_directory());
}

/// Four times twenty-five, so that none of the tests lasts long.
class ApplicationManagerInstancesTogether : public testing::TestWithParam<int>
{ };

INSTANTIATE_TEST_SUITE_P(Rounds, ApplicationManagerInstancesTogether, testing::Values(1, 26, 51, 76));

} // namespace

TEST_P(ApplicationManagerInstancesTogether, AgreeOnLogsLockAndCleanUp)
{
    for (int round = GetParam(); round < GetParam() + 25; ++round) {
        SCOPED_TRACE(round);
        start_two_together();
        if (HasFailure()) {
            return;
        }
    }
}

TEST(ApplicationManagerInstances, SecondDeletesNothing)
{
    Probe first;
    ASSERT_TRUE(first.start({"--temporary"}));
    const std::string stale = lock_files::abandoned_directory("vista");
    Probe second;
    ASSERT_TRUE(second.start());
    EXPECT_EQ(first.held_lock(), lock_file());
    EXPECT_EQ(second.held_lock(), "");
    EXPECT_TRUE(fs::exists(first.fact("temporary")));
    EXPECT_TRUE(fs::exists(stale));
    EXPECT_EQ(second.finish(), 0);
    EXPECT_TRUE(fs::exists(stale));
    EXPECT_EQ(first.held_lock(), lock_file());
    EXPECT_EQ(first.finish(), 0);
}

TEST(ApplicationManagerInstances, NextHolderDeletesWhatNobodyLivesIn)
{
    Probe first;
    Probe second;
    ASSERT_TRUE(first.start({"--temporary"}));
    ASSERT_TRUE(second.start({"--temporary"}));
    first.kill_it();
    ASSERT_TRUE(fs::exists(first.fact("temporary")));

    Probe third;
    ASSERT_TRUE(third.start());
    EXPECT_EQ(third.held_lock(), lock_file());
    EXPECT_FALSE(fs::exists(first.fact("temporary")));
    EXPECT_TRUE(fs::exists(second.fact("temporary")));
    EXPECT_EQ(third.finish(), 0);
    EXPECT_EQ(second.finish(), 0);
}

TEST(ApplicationManagerInstances, LockOfAKilledProcessIsFree)
{
    Probe first;
    ASSERT_TRUE(first.start());
    EXPECT_FALSE(lock_files::is_free(lock_file()));
    first.kill_it();
    EXPECT_TRUE(lock_files::is_free(lock_file()));
}

TEST(ApplicationManagerInstances, DifferentSessionsHaveDifferentLocks)
{
    Probe first;
    Probe second;
    Probe third;
    second.set("XDG_SESSION_ID", "32");
    third.set("XDG_SESSION_ID", "c2");
    ASSERT_TRUE(first.start());
    ASSERT_TRUE(second.start());
    ASSERT_TRUE(third.start());
    const std::string directory = QDir::tempPath().toStdString();
    EXPECT_EQ(first.held_lock(), directory + "/Tarq-a5cf-1f-lockfile");
    EXPECT_EQ(second.held_lock(), directory + "/Tarq-a5cf-20-lockfile");
    EXPECT_EQ(third.held_lock(), directory + "/Tarq-a5cf-c2-lockfile");
    EXPECT_EQ(first.finish(), 0);
    EXPECT_EQ(second.finish(), 0);
    EXPECT_EQ(third.finish(), 0);
}
