#include "LockFiles.h"
#include "LogFiles.h"
#include "Probe.h"
#include "support/ChildProcess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/TemporaryDirectory.h>

#include <QtCore/QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::utilities::TemporaryDirectory;

namespace {

const char* const s_lock_name = "/Tarq-a5cf-1f-lockfile"; // of the session 31, which probes are in

std::string lock_file()
{
    return QDir::tempPath().toStdString() + s_lock_name;
}

/// A program without windows that lives in a temporary directory; a copy of this one, which starts quickly.
class Instance
{
public:
    Instance()
        : m_process([] { return start(); }, [] { end(); })
    { }

    /// Waits until its start-up is over.
    void wait_until_ready()
    {
        std::istringstream report(m_process.report());
        std::getline(report, log);
        std::getline(report, temporary);
    }
    bool holds_the_lock() const { return lock_files::held_by(m_process.id()) == lock_file(); }
    /// Tells it to end. @return the exit code; -1 if it crashed
    int finish() { return m_process.let_go(); }

    // After the start
    std::string log;
    std::string temporary;

private:
    static std::string start()
    {
        setenv("XDG_CONFIG_HOME", (Probe::home() + "/config").c_str(), 1);
        setenv("XDG_SESSION_ID", "31", 1);
        s_directory = std::make_unique<TemporaryDirectory>("vista");
        int count = 1;
        char name[] = "instance";
        char* arguments[] = {name, nullptr};
        char** p_arguments = arguments;
        ApplicationManager::instance().init(count, p_arguments, "instance", false);
        return ErrorProtocol::instance().log_filename() + '\n' + s_directory->path();
    }
    static void end()
    {
        pkBase::pkDestructor::run();
        s_directory.reset();
    }

    static inline std::unique_ptr<TemporaryDirectory> s_directory; // only in the copy

    support::ChildProcess m_process;
};

/// Two that start at the same time.
void start_two_together()
{
    fs::create_directories(Probe::home() + "/config");
    const std::string stale = lock_files::abandoned_directory("vista");
    Instance first;
    Instance second;
    first.wait_until_ready();
    second.wait_until_ready();

    EXPECT_NE(first.log, second.log);
    EXPECT_NE(first.holds_the_lock(), second.holds_the_lock());
    EXPECT_TRUE(fs::exists(first.temporary));
    EXPECT_TRUE(fs::exists(second.temporary));
    EXPECT_FALSE(fs::exists(stale));

    EXPECT_EQ(first.finish(), 0);
    EXPECT_EQ(second.finish(), 0);
    EXPECT_NE(log_files::read(first.log), "");
    EXPECT_EQ(log_files::read(first.log), log_files::read(second.log));
    EXPECT_FALSE(fs::exists(first.temporary));
    EXPECT_FALSE(fs::exists(second.temporary));
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
