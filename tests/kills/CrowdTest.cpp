#include "Home.h"
#include "LockFiles.h"
#include "LogReading.h"
#include "Victim.h"
#include "support/ChildProcess.h"
#include "support/PrivateHome.h"

#include <QtCore/QSettings>
#include <QtCore/QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using kills::Home;
using kills::HostOptions;
using kills::Kind;
using kills::Victim;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const std::size_t s_names = 20; ///< of logs

/// Twenty hosts, or more, that begin at the same moment in one home.
class Crowd : public testing::Test
{
protected:
    Crowd()
        : home(support::PrivateHome::scratch_directory() + "/crowd")
        , options(home.options())
    {
        options.steps = 40;
        options.stores = false;
        options.waits = true;
    }

    /// Starts them, lets them begin together, and waits until each has done its work.
    void start(std::size_t count)
    {
        std::array<int, 2> gate;
        ASSERT_EQ(::pipe2(gate.data(), O_CLOEXEC), 0);
        options.gate = gate[0];
        for (std::size_t i = 0; i < count; ++i) {
            options.first = static_cast<std::uint32_t>(i + 1);
            hosts.push_back(std::make_unique<Victim>(home, options, Victim::Launch::Program));
        }
        for (const auto& host : hosts) {
            ASSERT_TRUE(host->read_until(Kind::Begun));
        }
        const std::string bytes(count, 'g');
        ASSERT_EQ(::write(gate[1], bytes.data(), count), static_cast<ssize_t>(count));
        for (const auto& host : hosts) {
            ASSERT_TRUE(host->read_until(Kind::Done));
        }
        ::close(gate[0]);
        ::close(gate[1]);
    }

    /// How many hosts have each log.
    std::map<std::uint32_t, int> owners() const
    {
        std::map<std::uint32_t, int> owners;
        for (const auto& host : hosts) {
            ++owners[host->last(Kind::Log).value_or(0)];
        }
        return owners;
    }

    std::size_t directories() const
    {
        std::set<std::string> directories;
        for (const auto& host : hosts) {
            for (const std::string& path : home.directories_of(host->id())) {
                directories.insert(path);
            }
        }
        return directories.size();
    }

    std::size_t holders_of_the_lock() const
    {
        return static_cast<std::size_t>(std::count_if(hosts.begin(), hosts.end(),
            [](const auto& host) { return !lock_files::held_by(host->id()).empty(); }));
    }

    void end()
    {
        for (const auto& host : hosts) {
            host->tell(kills::s_end);
        }
        for (const auto& host : hosts) {
            EXPECT_TRUE(host->wait_for_end());
            EXPECT_TRUE(host->told(Kind::Ended));
            EXPECT_EQ(host->last(Kind::OwnDirectory), 1u);
        }
    }

    /// Every log that is one host's alone has all its entries, and each host's begins with the same head.
    void expect_whole_logs()
    {
        std::set<std::string> heads;
        for (const auto& [number, count] : owners()) {
            const std::string text = kills::content_of(home.log_file(number));
            heads.insert(kills::head_of(text));
            const kills::LogReading reading = kills::read_log(text, kills::head_of(text));
            if (count > 1) {
                continue;
            }
            EXPECT_THAT(reading.violations, IsEmpty()) << number;
            EXPECT_EQ(reading.main, options.steps) << number;
            EXPECT_EQ(reading.worker, options.steps) << number;
            EXPECT_TRUE(reading.has_banner) << number;
            EXPECT_FALSE(reading.has_cut_entry) << number;
        }
        EXPECT_THAT(heads, SizeIs(1));
        EXPECT_EQ(heads.count(""), 0u);
    }

    /// One host more, that does nothing but read what is stored.
    std::unique_ptr<Victim> read_stored()
    {
        HostOptions alone = home.options();
        alone.steps = 1;
        auto host = std::make_unique<Victim>(home, alone, Victim::Launch::Program);
        EXPECT_TRUE(host->wait_for_end());
        return host;
    }

    Home home;
    HostOptions options;
    std::vector<std::unique_ptr<Victim>> hosts;
};

/// The recent documents as they are stored: "whole" or what is wrong, and how many.
std::string stored_recent_documents()
{
    QSettings settings("Tarqa", "TarqAllVersions");
    settings.beginGroup("RecentFileList");
    int count = 0;
    std::string verdict = "whole";
    for (; settings.contains("recently_viewed_doc" + QString::number(count)); ++count) {
        const QStringList list
            = settings.value("recently_viewed_doc" + QString::number(count)).toStringList();
        const bool whole = list.size() == 5 && list[0].endsWith(".tif") && list[1] == "fake"
            && list[2] == "elevation" && list[3] == "metres";
        verdict = whole ? verdict : list.join('|').toStdString();
    }
    return verdict + ' ' + std::to_string(count) + " of " + std::to_string(settings.childKeys().size());
}

} // namespace

TEST_F(Crowd, TwentyHaveTheirOwnLogsAndDirectories)
{
    start(20);
    EXPECT_THAT(owners(), SizeIs(20)); // and 20 names are all there are
    EXPECT_EQ(directories(), 20u);
    EXPECT_EQ(holders_of_the_lock(), 1u);
    end();
    EXPECT_EQ(directories(), 0u);
    EXPECT_EQ(holders_of_the_lock(), 0u);
    expect_whole_logs();
    EXPECT_EQ(home.files_beside_logs(), 0u);
    EXPECT_THAT(home.touched(), IsEmpty());
}

TEST_F(Crowd, TwentyShareNoneOfTheLogsThatTheyReuse)
{
    for (std::uint32_t number = 1; number <= s_names; ++number) {
        home.make_old_log(number, static_cast<int>(1 + number * 7 % 20));
    }
    start(20);
    EXPECT_THAT(owners(), SizeIs(20));
    end();
    expect_whole_logs();
    EXPECT_THAT(home.logs(), SizeIs(20));
    EXPECT_EQ(home.files_beside_logs(), 0u);
}

TEST_F(Crowd, TwentyTakeFreeNamesAndOldOnesAndNoneTwice)
{
    for (std::uint32_t number = 2; number <= s_names; number += 2) {
        home.make_old_log(number, static_cast<int>(number));
    }
    start(20);
    EXPECT_THAT(owners(), SizeIs(20));
    end();
    expect_whole_logs();
    EXPECT_THAT(home.logs(), SizeIs(20));
}

TEST_F(Crowd, FewerLeaveTheNewerOfTheOldLogsAlone)
{
    for (std::uint32_t number = 1; number <= s_names; ++number) {
        home.make_old_log(number, static_cast<int>(100 - number)); // 1 to 6 are the oldest
    }
    start(6);
    std::set<std::uint32_t> taken;
    for (const auto& owner : owners()) {
        taken.insert(owner.first);
    }
    EXPECT_THAT(taken, testing::ElementsAre(1, 2, 3, 4, 5, 6));
    end();
    expect_whole_logs();
    for (std::uint32_t number = 7; number <= s_names; ++number) {
        EXPECT_EQ(kills::content_of(home.log_file(number)), "an old log\n") << number;
    }
}

TEST_F(Crowd, MoreThanThereAreNamesTakeOverTheOldestOnes)
{
    options.claims_first = true; // so that no log is emptied while its other owner writes
    options.steps = 4;
    start(24);
    EXPECT_THAT(owners(), SizeIs(s_names));
    EXPECT_EQ(owners().count(0), 0u);
    EXPECT_EQ(directories(), 24u);
    EXPECT_EQ(holders_of_the_lock(), 1u);
    end();
    expect_whole_logs();
    EXPECT_THAT(home.logs(), SizeIs(s_names));
    EXPECT_EQ(home.files_beside_logs(), 0u);
}

TEST_F(Crowd, LeavesWholeSettingsOfOneOfThem)
{
    ASSERT_TRUE(read_stored()->told(Kind::Ended)); // which stores what nobody changes
    options.steps = 10;
    options.stores = true;
    start(20);
    end();
    std::set<std::uint32_t> paths;
    std::set<std::uint32_t> colours;
    for (const auto& host : hosts) {
        paths.insert(host->last(Kind::Ffmpeg).value_or(0));
        colours.insert(host->last(Kind::Colour).value_or(0));
    }
    const auto reader = read_stored();
    EXPECT_EQ(paths.count(reader->last(Kind::FfmpegRead).value()), 1u);
    EXPECT_EQ(colours.count(reader->last(Kind::ColourRead).value()), 1u);
    EXPECT_EQ(reader->last(Kind::KeptRead), 1u);
    EXPECT_THAT(home.settings_left_over(), IsEmpty());
}

TEST_F(Crowd, LeavesWholeRecentDocuments)
{
    options.steps = 10;
    options.stores = true; // one document each
    start(20);
    end();
    support::ChildProcess reader([this] {
        home.enter();
        return stored_recent_documents();
    });
    // At worst nobody has seen what the others saved; the keys have no gap all the same.
    const std::string report = reader.report();
    EXPECT_THAT(report, testing::MatchesRegex("whole [0-9]+ of [0-9]+"));
    const int count = std::stoi(report.substr(report.find(' ')));
    EXPECT_EQ(report, "whole " + std::to_string(count) + " of " + std::to_string(count));
    EXPECT_GE(count, 1);
    EXPECT_LE(count, 20);
    EXPECT_EQ(reader.let_go(), 0);
}

TEST_F(Crowd, LosesNoRecentDocumentThatWasPushedAfterAnotherLoad)
{
    start(20);
    for (const auto& host : hosts) {
        host->tell(kills::s_store);
        ASSERT_TRUE(host->read_until(Kind::Recent));
    }
    end();
    const auto reader = read_stored();
    EXPECT_EQ(reader->last(Kind::RecentCount), 20u);
    EXPECT_EQ(reader->last(Kind::RecentRead), hosts.back()->last(Kind::Recent));
}

TEST_F(Crowd, CleansUpWhatIsStaleAndNothingOfEachOther)
{
    options.gate = -1;
    std::vector<pid_t> dead;
    for (int i = 0; i < 5; ++i) {
        Victim victim(home, options, Victim::Launch::Program);
        ASSERT_TRUE(victim.read_until(Kind::Done));
        dead.push_back(victim.id());
        victim.kill();
    }
    EXPECT_THAT(home.directories_of(dead.back()), SizeIs(1));
    start(20);
    for (const pid_t process : dead) {
        EXPECT_THAT(home.directories_of(process), IsEmpty());
    }
    EXPECT_EQ(directories(), 20u);
    end(); // which looks into each one's directory
    EXPECT_THAT(home.touched(), IsEmpty());
}

TEST_F(Crowd, LeavesNothingForLongWhenAllAreKilledAtOnce)
{
    start(20);
    for (const auto& host : hosts) {
        host->kill_and_go_on();
    }
    for (const auto& host : hosts) {
        host->kill();
    }
    EXPECT_EQ(directories(), 20u);
    EXPECT_TRUE(read_stored()->told(Kind::Ended));
    EXPECT_EQ(directories(), 0u);
    EXPECT_THAT(home.touched(), IsEmpty());
}
