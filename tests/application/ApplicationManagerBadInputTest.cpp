#include "LockFiles.h"
#include "Probe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace fs = std::filesystem;

using testing::EndsWith;
using testing::StartsWith;

namespace {

const std::string s_huge(100 * 1024, 'x'); // about what the system lets a variable hold

const std::vector<std::string> s_garbage
    = {"", " ", "garbage", "-1", "0", "1e300", "99999999999999999999", "%1%s%n", "../../..", "/", "/dev/null",
        "/proc/no/such", "\xff\xfe\x01", "a\nb\tc", "\xc3\xa4\xe2\x82\xac", s_huge};

/// What must come of every start: nothing but the usual in the log, and a good end.
void expect_usual_run(Probe& probe)
{
    ASSERT_TRUE(probe.start({"--temporary"})) << probe.error();
    EXPECT_THAT(probe.entries(), StartsWith("post-Qt init Path: "));
    EXPECT_THAT(probe.entries(), EndsWith("Background rendering is ON\n"));
    EXPECT_EQ(probe.entries().find("ASSERT"), std::string::npos);
    EXPECT_EQ(probe.finish(), 0) << probe.error();
    EXPECT_TRUE(fs::is_empty(Probe::working_directory()));
    fs::remove_all(Probe::log_directory());
}

class ApplicationManagerGarbage : public testing::TestWithParam<const char*>
{ };

INSTANTIATE_TEST_SUITE_P(Variable, ApplicationManagerGarbage,
    testing::Values("QT_DEVICE_PIXEL_RATIO", "XDG_SESSION_ID", "DBUS_SYSTEM_BUS_ADDRESS", "GDAL_DATA",
        "GEOTIFF_CSV", "PROJ_LIB"),
    [](const auto& variable) { return std::string(variable.param); });

} // namespace

TEST_P(ApplicationManagerGarbage, DoesNotStopTheStart)
{
    for (const std::string& value : s_garbage) {
        SCOPED_TRACE(value.substr(0, 40));
        Probe probe;
        probe.set(GetParam(), value);
        expect_usual_run(probe);
    }
}

TEST(ApplicationManagerBadInput, EveryValueTurnsBackgroundRenderingOff)
{
    for (const std::string& value : s_garbage) {
        SCOPED_TRACE(value.substr(0, 40));
        Probe probe;
        probe.set("TARQ_NO_BACKGROUND_RENDERING", value);
        ASSERT_TRUE(probe.start()) << probe.error();
        EXPECT_THAT(probe.entries(), EndsWith("Background rendering is OFF\n"));
        EXPECT_EQ(probe.finish(), 0);
        fs::remove_all(Probe::log_directory());
    }
}

TEST(ApplicationManagerBadInput, UnusableTemporaryDirectoryOnlySkipsTheCleanUp)
{
    const std::string stale = lock_files::abandoned_directory("vista");
    for (const std::string value : {"/proc", "/proc/no/such", "/dev/null", "/no/such/directory"}) {
        SCOPED_TRACE(value);
        Probe probe;
        probe.set("TMPDIR", value);
        ASSERT_TRUE(probe.start()) << probe.error();
        EXPECT_THAT(probe.entries(), EndsWith("Background rendering is ON\n"));
        EXPECT_TRUE(fs::exists(stale));
        EXPECT_EQ(probe.held_lock(), "");
        EXPECT_EQ(probe.finish(), 0) << probe.error();
        EXPECT_TRUE(fs::is_empty(Probe::working_directory()));
    }
}

TEST(ApplicationManagerBadInput, GarbageForTheTemporaryDirectoryDoesNotStopTheStart)
{
    for (const std::string& value :
        {std::string("no/such"), std::string("\xff\xfe"), std::string(" "), s_huge}) {
        SCOPED_TRACE(value.substr(0, 40));
        Probe probe;
        probe.set("TMPDIR", value);
        ASSERT_TRUE(probe.start()) << probe.error();
        EXPECT_EQ(probe.finish(), 0) << probe.error();
        EXPECT_TRUE(fs::is_empty(Probe::working_directory()));
    }
}

TEST(ApplicationManagerBadInput, GarbageForTheConfigurationLeadsToTheHome)
{
    for (const std::string value : {"", "relative", "~", "\xff"}) {
        SCOPED_TRACE(value);
        Probe probe;
        probe.set("XDG_CONFIG_HOME", value);
        ASSERT_TRUE(probe.start()) << probe.error();
        EXPECT_THAT(probe.fact("log"), StartsWith(Probe::home() + "/.config/tarqa/Tarq_"));
        EXPECT_THAT(probe.entries(), EndsWith("Background rendering is ON\n"));
        EXPECT_EQ(probe.finish(), 0);
    }
}

TEST(ApplicationManagerBadInput, NoHomeWillDo)
{
    Probe probe;
    probe.unset("HOME"); // the configuration has a place of its own
    expect_usual_run(probe);
}

TEST(ApplicationManagerBadInput, HomeThatCannotBeWrittenToMeansNoLog)
{
    for (const std::string home : {"/proc", "/proc/no/such", "/dev/null"}) {
        SCOPED_TRACE(home);
        Probe probe;
        probe.set("HOME", home);
        probe.unset("XDG_CONFIG_HOME");
        ASSERT_TRUE(probe.start({"--temporary"})) << probe.error();
        EXPECT_EQ(probe.log(), "");
        EXPECT_EQ(probe.finish(), 0) << probe.error();
    }
}

TEST(ApplicationManagerBadInput, ConfigurationThatCannotBeWrittenToMeansNoLog)
{
    for (const std::string directory : {"/proc", "/proc/no/such", "/dev/null", "/dev/full"}) {
        SCOPED_TRACE(directory);
        Probe probe;
        probe.set("XDG_CONFIG_HOME", directory);
        ASSERT_TRUE(probe.start()) << probe.error();
        EXPECT_EQ(probe.log(), "");
        EXPECT_EQ(probe.finish(), 0) << probe.error();
    }
}

TEST(ApplicationManagerBadInput, ReadOnlyConfigurationDoesNotStopTheStart)
{
    Probe probe;
    fs::create_directories(Probe::log_directory());
    fs::permissions(Probe::home() + "/config", fs::perms::owner_read | fs::perms::owner_exec);
    fs::permissions(Probe::log_directory(), fs::perms::owner_read | fs::perms::owner_exec);
    ASSERT_TRUE(probe.start()) << probe.error();
    // Nothing keeps the superuser from writing there.
    EXPECT_EQ(probe.log().empty(), ::geteuid() != 0);
    EXPECT_EQ(probe.finish(), 0);
    fs::permissions(Probe::log_directory(), fs::perms::owner_all);
    fs::permissions(Probe::home() + "/config", fs::perms::owner_all);
}

TEST(ApplicationManagerBadInput, FullDiskDoesNotStopTheStart)
{
    Probe probe;
    probe.limit_files_to_nothing();
    ASSERT_TRUE(probe.start()) << probe.error();
    EXPECT_EQ(probe.log(), "");
    EXPECT_EQ(probe.finish(), 0) << probe.error();
}

TEST(ApplicationManagerBadInput, LogsOnAFullDeviceDoNotStopTheStart)
{
    Probe probe;
    fs::create_directories(Probe::log_directory());
    for (int number = 1; number <= 20; ++number) {
        fs::create_symlink("/dev/full", Probe::log_directory() + "/Tarq_" + std::to_string(number) + ".log");
    }
    ASSERT_TRUE(probe.start()) << probe.error();
    EXPECT_EQ(probe.finish(), 0) << probe.error();
}

TEST(ApplicationManagerStandardError, NothingIsPrintedThere)
{
    Probe with_windows;
    Probe without;
    with_windows.unset("QT_DEVICE_PIXEL_RATIO"); // Qt would have something to say about what is set then
    ASSERT_TRUE(with_windows.start());
    ASSERT_TRUE(without.start({"--batch"}));
    EXPECT_EQ(with_windows.finish(), 0);
    EXPECT_EQ(without.finish(), 0);
    EXPECT_EQ(with_windows.error(), "");
    EXPECT_EQ(without.error(), "");
}
