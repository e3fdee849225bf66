#include "SettingsTable.h"
#include "StoredSettings.h"
#include "support/ChildProcess.h"
#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/resource.h>

namespace fs = std::filesystem;

using stored_settings::in_new_application;
using stored_settings::User;
using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;

namespace {

typedef std::map<std::string, std::string> Entries;

/// The rows that are not at their defaults, "key=value" each.
std::string changed_settings(const ApplicationManager& manager)
{
    std::string changed;
    for (const Setting& setting : settings_table()) {
        const std::string value = setting.get(manager);
        if (value != setting.initial) {
            changed += setting.key + "=" + value + " ";
        }
    }
    return changed;
}

/// Sets every row; those that do not take their new value.
std::string lost_settings(ApplicationManager& manager)
{
    std::string lost;
    for (const Setting& setting : settings_table()) {
        setting.set(manager, setting.others.front());
        const bool hidden = setting.key == "seismicRenderQuality" && !manager.useShaderRendering();
        if (!hidden && setting.get(manager) != setting.others.front()) {
            lost += setting.key + " ";
        }
    }
    return lost;
}

/// As lost_settings(), where nothing can be stored; also names the rows whose loss is not in the error log.
std::string lost_and_unreported_settings(ApplicationManager& manager)
{
    support::LogCapture log;
    std::string lost = lost_settings(manager);
    for (const Setting& setting : settings_table()) {
        if (!log.take(
                "The setting \"" + setting.path() + "\" could not be stored in " + stored_settings::path())) {
            lost += setting.path() + " ";
        }
    }
    return lost;
}

/// What was read, and what gets lost where nothing can be stored.
std::string read_and_set(ApplicationManager& manager)
{
    const std::string changed = changed_settings(manager);
    return changed + "lost: " + lost_and_unreported_settings(manager);
}

/// From here on this process cannot write a byte into any file.
void fill_disk()
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full = {0, RLIM_INFINITY};
    if (setrlimit(RLIMIT_FSIZE, &full) != 0) {
        throw std::runtime_error("cannot fill the disk");
    }
}

/// What can be wrong with the file: nothing of it is readable, and every start goes on with the defaults.
struct Damage
{
    std::string name;
    std::string content;
    bool noticed = false; ///< whether it breaks the rules of such files and does not only look odd
};

std::ostream& operator<<(std::ostream& stream, const Damage& damage)
{
    return stream << damage.name;
}

std::string all_bytes()
{
    std::string bytes;
    for (int i = 0; i < 4096; ++i) {
        bytes += static_cast<char>((i * 7919) >> 3);
    }
    return bytes;
}

class ApplicationManagerDamagedSettings : public testing::TestWithParam<Damage>
{ };

/// An odd value of one setting.
struct Odd
{
    std::string name;
    std::string group;
    std::string key;
    std::string text;
    std::string expected;
};

std::ostream& operator<<(std::ostream& stream, const Odd& odd)
{
    return stream << odd.name;
}

class ApplicationManagerOddSetting : public testing::TestWithParam<Odd>
{ };

const Setting& row(const std::string& key)
{
    for (const Setting& setting : settings_table()) {
        if (setting.key == key) {
            return setting;
        }
    }
    throw std::runtime_error("no setting " + key);
}

} // namespace

// Values that no setter writes

INSTANTIATE_TEST_SUITE_P(Values, ApplicationManagerOddSetting,
    testing::Values(
        // What is no number, or none of the mode or quality, gives the default.
        Odd{"ModeOutOfRange", "application", "mouse_mode", "99", "0"},
        Odd{"ModeBelowZero", "application", "mouse_mode", "-1", "0"},
        Odd{"ModeInQuotes", "application", "mouse_mode", "\"2\"", "2"},
        Odd{"ModeOfText", "application", "mouse_mode", "left", "0"},
        Odd{"ModeOfNothing", "application", "mouse_mode", "", "0"},
        Odd{"ModeOfAFraction", "application", "mouse_mode", "1.5", "0"},
        Odd{"ModeTooLong", "application", "mouse_mode", "99999999999999999999", "0"},
        Odd{"ModeOfAList", "application", "mouse_mode", "1, 2", "0"},
        Odd{"SectorOfText", "application", "industry_sector", "mining", "0"},
        Odd{"SectorBelowZero", "application", "industry_sector", "-7", "-7"},
        Odd{"SectorTooLarge", "application", "industry_sector", "2147483648", "0"},
        Odd{"QualityBelowZero", "performance_options", "seismicRenderQuality", "-1", "2"},
        Odd{"QualityTooHigh", "performance_options", "seismicRenderQuality", "3", "2"},
        Odd{"QualityOfText", "performance_options", "seismicRenderQuality", "best", "2"},
        Odd{"QualityOfNothing", "performance_options", "seismicRenderQuality", "", "2"},
        // Switches come back as texts.
        Odd{"SwitchOff", "viewer_options", "shader_rendering", "false", "false"},
        Odd{"SwitchOfZero", "viewer_options", "shader_rendering", "0", "false"},
        Odd{"SwitchOfNothing", "viewer_options", "shader_rendering", "", "false"},
        Odd{"SwitchOn", "viewer_options", "use_metric_symbol_size", "true", "true"},
        Odd{"SwitchOfOne", "viewer_options", "use_metric_symbol_size", "1", "true"},
        Odd{"SwitchInCapitals", "viewer_options", "shader_rendering", "FALSE", "false"},
        Odd{"SwitchOfAList", "viewer_options", "shader_rendering", "a, b", "false"},
        // What names no colour gives the default.
        Odd{"ColourOfNonsense", "viewer_options", "background_color", "greenish", "#ffffff"},
        Odd{"ColourOfNothing", "viewer_options", "background_color", "", "#ffffff"},
        Odd{"ColourTooShort", "viewer_options", "background_color", "#12", "#ffffff"},
        Odd{"ColourOfANumber", "viewer_options", "background_color", "255", "#ffffff"},
        Odd{"ColourOfAList", "viewer_options", "background_color", "1, 2, 3", "#ffffff"},
        Odd{"ColourOfInvalid", "viewer_options", "background_color", "@Invalid()", "#ffffff"},
        Odd{"HighlightOfNonsense", "viewer_options", "highlight_color", "greenish", "#ffff00"},
        Odd{"HighlightOfNothing", "viewer_options", "highlight_color", "", "#ffff00"},
        Odd{"ColourByName", "viewer_options", "background_color", "red", "#ff0000"},
        Odd{"ColourOfThreeDigits", "viewer_options", "highlight_color", "#f0a", "#ff00aa"},
        Odd{"ColourInCapitals", "viewer_options", "highlight_color", "#ABCDEF", "#abcdef"},
        // Types of Qt that are not the setting's.
        Odd{"NumberOfInvalid", "application", "industry_sector", "@Invalid()", "0"},
        Odd{"NumberOfBytes", "application", "industry_sector", "@ByteArray(5)", "5"},
        Odd{"NumberOfASize", "application", "industry_sector", "@Size(3 4)", "0"},
        Odd{"NumberOfHalfAVariant", "application", "industry_sector", "@Variant(\\0\\0)", "0"},
        Odd{"TextOfAList", "animation_tool", "pathToFFmpegExecutable", "a, b", ""},
        Odd{"TextOfASize", "animation_tool", "pathToFFmpegExecutable", "@Size(3 4)", ""},
        Odd{"TextOfInvalid", "animation_tool", "pathToFFmpegExecutable", "@Invalid()", ""}),
    [](const testing::TestParamInfo<Odd>& odd) { return odd.param.name; });

TEST_P(ApplicationManagerOddSetting, IsReadAsTheNextBestAndReplacedByTheSetter)
{
    const Odd& odd = GetParam();
    const Setting& setting = row(odd.key);
    stored_settings::write(odd.group, odd.key, odd.text);
    const StartedApplication started;
    EXPECT_EQ(odd.expected, setting.get(started.manager()));
    EXPECT_EQ(stored_settings::entries(), (Entries{{odd.group + "/" + odd.key, odd.text}}));

    setting.set(started.manager(), setting.others.front());
    EXPECT_EQ(setting.others.front(), setting.get(started.manager()));
    EXPECT_EQ(stored_settings::entries(), (Entries{{setting.path(), setting.others.front()}}));
}

TEST(ApplicationManagerOddSettings, SettersTakeNumbersAsTheyAre)
{
    const StartedApplication started;
    started.manager().setIndustrySector(-2147483647 - 1);
    EXPECT_EQ(-2147483647 - 1, started.manager().industrySector());
    EXPECT_EQ(stored_settings::entries(), (Entries{{"application/industry_sector", "-2147483648"}}));
}

// Colours

TEST(ApplicationManagerColours, InvalidOneChangesNothing)
{
    const StartedApplication started;
    started.manager().setViewBackgroundColour(QColor());
    started.manager().setViewHighlightColour(QColor("no colour"));
    EXPECT_FALSE(stored_settings::exists());
    EXPECT_EQ(QColor(Qt::white), started.manager().viewBackgroundColour());
    EXPECT_EQ(QColor(Qt::yellow), started.manager().viewHighlightColour());
}

TEST(ApplicationManagerColours, InvalidOneKeepsWhatWasSet)
{
    const StartedApplication started;
    started.manager().setViewBackgroundColour(Qt::red);
    started.manager().setViewHighlightColour(Qt::blue);
    const Entries stored = stored_settings::entries();
    started.manager().setViewBackgroundColour(QColor());
    started.manager().setViewHighlightColour(QColor());
    EXPECT_EQ(stored, stored_settings::entries());
    EXPECT_EQ(QColor(Qt::red), started.manager().viewBackgroundColour());
    EXPECT_EQ(QColor(Qt::blue), started.manager().viewHighlightColour());
}

TEST(ApplicationManagerColours, AreTwo)
{
    const StartedApplication started;
    started.manager().setViewBackgroundColour(Qt::red);
    EXPECT_EQ(QColor(Qt::yellow), started.manager().viewHighlightColour());
    started.manager().setViewHighlightColour(Qt::blue);
    EXPECT_EQ(QColor(Qt::red), started.manager().viewBackgroundColour());
    EXPECT_EQ(stored_settings::entries(),
        (Entries{
            {"viewer_options/background_color", "#ff0000"}, {"viewer_options/highlight_color", "#0000ff"}}));
}

TEST(ApplicationManagerColours, AreStoredByNameWhateverTheirModel)
{
    const StartedApplication started;
    for (const QColor& colour :
        {QColor(1, 2, 3, 40), QColor::fromHsv(120, 255, 255), QColor::fromCmykF(0, 1, 1, 0)}) {
        started.manager().setViewBackgroundColour(colour);
        EXPECT_EQ(colour, started.manager().viewBackgroundColour());
        EXPECT_EQ(stored_settings::entries(),
            (Entries{{"viewer_options/background_color", colour.name().toStdString()}}));
    }
}

// Files that are no settings

INSTANTIATE_TEST_SUITE_P(Files, ApplicationManagerDamagedSettings,
    testing::Values(Damage{"Empty", ""}, Damage{"AllBytes", all_bytes()},
        Damage{"Zeros", std::string(8192, '\0')}, Damage{"OneLineOfText", "this is no file of settings"},
        Damage{"OpenGroup", "[viewer_options", true}, Damage{"GroupAlone", "[viewer_options]"},
        Damage{"KeyAlone", "[viewer_options]\nanimate_jumps", true},
        Damage{"EqualsAlone", "[viewer_options]\n=\n=false\n"}, Damage{"Newlines", std::string(1000, '\n')},
        Damage{"OtherEncoding",
            std::string("\xff\xfe[\0v\0i\0e\0w\0e\0r\0_\0o\0p\0t\0i\0o\0n\0s\0]\0\n\0", 36)}),
    [](const testing::TestParamInfo<Damage>& damage) { return damage.param.name; });

TEST_P(ApplicationManagerDamagedSettings, StartGoesOnWithTheDefaults)
{
    stored_settings::write(GetParam().content);
    LogCapture log;
    const StartedApplication started(log);
    support::take_start_up_lines(log);
    EXPECT_EQ(GetParam().noticed, log.take("The settings file " + stored_settings::path() + " is damaged"));
    EXPECT_EQ("", changed_settings(started.manager()));
}

TEST_P(ApplicationManagerDamagedSettings, IsMendedByTheSetters)
{
    stored_settings::write(GetParam().content);
    LogCapture log;
    const StartedApplication started(log);
    log.take_all();
    EXPECT_EQ("", lost_settings(started.manager()));
    const Entries stored = stored_settings::entries();
    for (const Setting& setting : settings_table()) {
        const auto found = stored.find(setting.path());
        ASSERT_TRUE(found != stored.end()) << setting.key;
        EXPECT_EQ(setting.others.front(), found->second);
    }
}

TEST(ApplicationManagerSettingsFile, LostEndLosesNothingBefore)
{
    stored_settings::write("[viewer_options]\nanimate_jumps=false\nshader_rend");
    LogCapture log;
    const StartedApplication started(log);
    support::take_start_up_lines(log);
    EXPECT_TRUE(log.take("The settings file " + stored_settings::path() + " is damaged"));
    EXPECT_EQ("animate_jumps=false ", changed_settings(started.manager()));
}

TEST(ApplicationManagerSettingsFile, LinesOfOtherSystemsAreUnderstood)
{
    stored_settings::write("[viewer_options]\r\nanimate_jumps=false\r\nbackground_color=#ff0000\r\n");
    const StartedApplication started;
    EXPECT_EQ("animate_jumps=false background_color=#ff0000 ", changed_settings(started.manager()));
}

TEST(ApplicationManagerSettingsFile, DirectoryInThePlaceOfTheFile)
{
    fs::create_directories(stored_settings::path());
    const StartedApplication started;
    EXPECT_EQ("", changed_settings(started.manager()));
    EXPECT_EQ("", lost_and_unreported_settings(started.manager()));
    EXPECT_TRUE(fs::is_directory(stored_settings::path()));
}

TEST(ApplicationManagerSettingsFile, FileInThePlaceOfTheDirectory)
{
    std::ofstream(fs::path(stored_settings::path()).parent_path()) << "a file";
    const StartedApplication started;
    EXPECT_EQ("", changed_settings(started.manager()));
    EXPECT_EQ("", lost_and_unreported_settings(started.manager()));
    EXPECT_TRUE(fs::is_regular_file(fs::path(stored_settings::path()).parent_path()));
}

TEST(ApplicationManagerSettingsFile, LoopOfSymbolicLinks)
{
    fs::create_directories(fs::path(stored_settings::path()).parent_path());
    fs::create_symlink(stored_settings::path() + "2", stored_settings::path());
    fs::create_symlink(stored_settings::path(), stored_settings::path() + "2");
    const StartedApplication started;
    EXPECT_EQ("", changed_settings(started.manager()));
    EXPECT_EQ("", lost_settings(started.manager()));
}

TEST(ApplicationManagerSettingsFile, LinkToNowhere)
{
    fs::create_directories(fs::path(stored_settings::path()).parent_path());
    fs::create_symlink("/nonexistent/directory/file", stored_settings::path());
    const StartedApplication started;
    EXPECT_EQ("", changed_settings(started.manager()));
    EXPECT_EQ("", lost_and_unreported_settings(started.manager()));
}

TEST(ApplicationManagerSettingsFile, LinkToAFileIsFollowed)
{
    stored_settings::write("viewer_options", "animate_jumps", "false");
    const std::string target = stored_settings::path() + ".elsewhere";
    fs::rename(stored_settings::path(), target);
    fs::create_symlink(target, stored_settings::path());
    const StartedApplication started;
    EXPECT_EQ("animate_jumps=false ", changed_settings(started.manager()));
    started.manager().setAnimateCameraJumps(true);
    EXPECT_EQ(stored_settings::entries(), (Entries{{"viewer_options/animate_jumps", "true"}}));
}

// What the user may not do

TEST(ApplicationManagerSettingsFile, ReadOnlyOneIsReadAndLaterSettingsHoldForThisRun)
{
    stored_settings::write("viewer_options", "animate_jumps", "false");
    fs::permissions(stored_settings::path(), fs::perms::owner_read);
    const fs::path directory = fs::path(stored_settings::path()).parent_path();
    fs::permissions(directory, fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ("animate_jumps=false lost: ", in_new_application(read_and_set, User::Ordinary));
    EXPECT_EQ(stored_settings::entries(), (Entries{{"viewer_options/animate_jumps", "false"}}));
    fs::permissions(directory, fs::perms::owner_all);
}

TEST(ApplicationManagerSettingsFile, UnreadableOneGivesTheDefaults)
{
    stored_settings::write("viewer_options", "animate_jumps", "false");
    fs::permissions(stored_settings::path(), fs::perms::none);
    EXPECT_EQ("lost: ", in_new_application(read_and_set, User::Ordinary));
}

TEST(ApplicationManagerSettingsFile, UnreadableDirectoryGivesTheDefaults)
{
    stored_settings::write("viewer_options", "animate_jumps", "false");
    const fs::path directory = fs::path(stored_settings::path()).parent_path();
    fs::permissions(directory, fs::perms::none);
    EXPECT_EQ("lost: ", in_new_application(read_and_set, User::Ordinary));
    fs::permissions(directory, fs::perms::owner_all);
    EXPECT_EQ(stored_settings::entries(), (Entries{{"viewer_options/animate_jumps", "false"}}));
}

// A full disk, where the error log cannot be written either

TEST(ApplicationManagerSettingsFile, FullDiskKeepsWhatIsStored)
{
    stored_settings::write("viewer_options", "animate_jumps", "false");
    const std::string report = in_new_application([](ApplicationManager& manager) {
        fill_disk();
        return lost_settings(manager);
    });
    EXPECT_EQ("", report);
    EXPECT_EQ(stored_settings::entries(), (Entries{{"viewer_options/animate_jumps", "false"}}));
}

TEST(ApplicationManagerSettingsFile, DiskMayBeFullFromTheBeginning)
{
    stored_settings::write("viewer_options", "animate_jumps", "false");
    support::ChildProcess child([]() -> std::string {
        fill_disk();
        char name[] = "test";
        char* arguments[] = {name, nullptr};
        char** argv = arguments;
        int argc = 1;
        ApplicationManager& manager = ApplicationManager::instance();
        manager.init(argc, argv, "test", true);
        const std::string changed = changed_settings(manager);
        return changed + "lost: " + lost_settings(manager);
    });
    EXPECT_EQ("animate_jumps=false lost: ", child.report());
    EXPECT_EQ(stored_settings::entries(), (Entries{{"viewer_options/animate_jumps", "false"}}));
}
