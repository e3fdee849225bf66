#include "Home.h"
#include "Host.h"
#include "LogReading.h"
#include "Series.h"
#include "Victim.h"
#include "support/PrivateHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iostream>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace fs = std::filesystem;

using kills::entry_text;
using kills::LogReading;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const std::string s_head = "head of a log\n";
const std::string s_start_up = "post-Qt init Path: /usr/plugins\nBackground rendering is ON\n";
const std::string s_banner = "************** END OF ERROR LOG ***************\n";

std::string first_entries(std::uint32_t main, std::uint32_t worker)
{
    std::string text;
    for (std::uint32_t number = 1; number <= main; ++number) {
        text += entry_text(false, number);
    }
    for (std::uint32_t number = 1; number <= worker; ++number) {
        text += entry_text(true, number);
    }
    return text;
}

LogReading read(const std::string& entries)
{
    return kills::read_log(s_head + s_start_up + entries, s_head);
}

/// Fifty hosts that are killed, one after the other in one home; the parameter is the seed.
class Kills : public testing::TestWithParam<int>
{ };

} // namespace

TEST_P(Kills, LeaveWholeEntriesAndSettingsAndNothingForTheNextStart)
{
    kills::Series series(
        support::PrivateHome::scratch_directory() + "/kills", static_cast<std::uint64_t>(GetParam()));
    series.run(50);
    std::cout << series.figures();
    EXPECT_THAT(series.violations(), IsEmpty());
    EXPECT_EQ(series.figures().kills(), 50u);
    EXPECT_EQ(series.figures().lost_entries, 0u);
    EXPECT_GT(series.figures().entries, 0u);
    EXPECT_GT(series.figures().starts, series.figures().at_work);
    EXPECT_EQ(series.figures().cleaned, series.figures().stale);
    EXPECT_GT(series.figures().cleaned, 0u);
}

INSTANTIATE_TEST_SUITE_P(Seed, Kills, testing::Range(1, 11));

TEST(KillsInTheMiddle, DirectoryThatWasHalfMadeGoesAfterADayAlsoIfItIsAlone)
{
    const std::string root = support::PrivateHome::scratch_directory() + "/kills";
    const kills::Home home(root); // which has a young one
    const std::string old = root + "/tmp/.new-vista-2-abcdef";
    fs::create_directory(old);
    fs::last_write_time(old, fs::file_time_type::clock::now() - std::chrono::hours(25));
    kills::HostOptions options = home.options();
    options.steps = 1;
    kills::Victim host(home, options, kills::Victim::Launch::Program);
    ASSERT_TRUE(host.wait_for_end());
    EXPECT_FALSE(fs::exists(old));
    EXPECT_THAT(home.touched(), IsEmpty());
}

// Qt makes the lock and then writes into it; for one that is empty it would wait half a minute.
TEST(KillsInTheMiddle, SettingsLockWithoutANameGoesWithTheNextStart)
{
    const std::string root = support::PrivateHome::scratch_directory() + "/kills";
    const kills::Home home(root);
    const std::string dead = root + "/config/Tarqa/Tarq.conf.lock";
    const std::string dead_of_documents = root + "/config/Tarqa/TarqAllVersions.conf.lock";
    kills::write_content(dead, "");
    kills::write_content(dead_of_documents, "");
    const std::string second_name = root + "/second-name"; // by which it can be told from the host's own lock
    fs::create_hard_link(dead, second_name);
    kills::HostOptions options = home.options();
    options.steps = 10; // the last one stores
    kills::Victim host(home, options, kills::Victim::Launch::Program);
    ASSERT_TRUE(host.read_until(kills::Kind::Ready));
    EXPECT_EQ(fs::hard_link_count(second_name), 1u);
    ASSERT_TRUE(host.wait_for_end());
    EXPECT_THAT(home.settings_left_over(), IsEmpty());
}

TEST(KillsInTheMiddle, SettingsLockOfALivingProcessStays)
{
    const std::string root = support::PrivateHome::scratch_directory() + "/kills";
    const kills::Home home(root);
    const std::string held = root + "/config/Tarqa/Tarq.conf.lock";
    const int descriptor = ::open(held.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    ASSERT_EQ(::flock(descriptor, LOCK_EX | LOCK_NB), 0);
    kills::Victim host(home, home.options(), kills::Victim::Launch::Program);
    EXPECT_TRUE(host.read_until(kills::Kind::Ready));
    host.kill();
    EXPECT_TRUE(fs::exists(held));
    ::close(descriptor);
}

// --- how the logs are read

TEST(KillsReading, WholeLogIsAsItShouldBe)
{
    const LogReading reading = read(first_entries(40, 30) + s_banner);
    EXPECT_THAT(reading.violations, IsEmpty());
    EXPECT_TRUE(reading.has_head);
    EXPECT_EQ(reading.main, 40u);
    EXPECT_EQ(reading.worker, 30u);
    EXPECT_TRUE(reading.has_banner);
    EXPECT_FALSE(reading.has_cut_entry);
}

TEST(KillsReading, VeryLastEntryMayBeCut)
{
    const std::string next = entry_text(false, 7);
    for (std::size_t length = 1; length < next.size(); ++length) {
        const LogReading reading = read(first_entries(6, 3) + next.substr(0, length));
        ASSERT_THAT(reading.violations, IsEmpty()) << length;
        ASSERT_TRUE(reading.has_cut_entry) << length;
        ASSERT_EQ(reading.main, 6u) << length;
    }
}

TEST(KillsReading, NoOtherEntryMayBeCut)
{
    const std::string cut = entry_text(false, 7).substr(0, 10);
    EXPECT_THAT(read(first_entries(6, 0) + cut + entry_text(true, 1)).violations, SizeIs(1));
    EXPECT_THAT(read(first_entries(6, 0) + cut + s_banner).violations, SizeIs(1));
    EXPECT_THAT(read(first_entries(6, 0) + s_banner + cut).violations, SizeIs(1));
}

TEST(KillsReading, EntriesMustBeInTheirOrder)
{
    EXPECT_THAT(read(first_entries(6, 0) + entry_text(false, 8)).violations, SizeIs(1));
    EXPECT_THAT(read(first_entries(6, 0) + entry_text(false, 6)).violations, SizeIs(1));
    EXPECT_THAT(read(first_entries(6, 0) + "something else\n").violations, SizeIs(1));
    EXPECT_THAT(read(first_entries(6, 0) + s_start_up).violations, SizeIs(1));
}

TEST(KillsReading, HeadMayBeCutAndNothingElse)
{
    EXPECT_TRUE(kills::read_log("", s_head).has_cut_head);
    EXPECT_TRUE(kills::read_log("head of", s_head).has_cut_head);
    EXPECT_THAT(kills::read_log("head of", s_head).violations, IsEmpty());
    EXPECT_FALSE(kills::read_log("head of", s_head).has_head);
    EXPECT_THAT(kills::read_log("tail of", s_head).violations, SizeIs(1));
}
