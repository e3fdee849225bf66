#include <tarqa/utilities/SystemPaths.h>
#include <tarqa/utilities/Url.h>

#include "support/PrivateHome.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <pwd.h>
#include <unistd.h>

namespace fs = std::filesystem;
using tarqa::utilities::filesystem_to_url;
using tarqa::utilities::SystemPaths;
using tarqa::utilities::url_to_filesystem;

namespace {

/// What a program that is installed as @p file, a path below the scratch directory, takes for its
/// installation root.
std::string root_of_program(const std::string& file, const std::string& argument = "")
{
    const fs::path program = fs::path(support::PrivateHome::scratch_directory()) / file;
    fs::create_directories(program.parent_path());
    fs::copy_file(TEST_ROOT_PROGRAM, program);
    FILE* const p_output = popen(("'" + program.string() + "' " + argument).c_str(), "r");
    std::string output;
    for (int c = std::fgetc(p_output); c != EOF; c = std::fgetc(p_output)) {
        output += static_cast<char>(c);
    }
    pclose(p_output);
    return output;
}

std::string scratch_url(const std::string& path)
{
    return filesystem_to_url(support::PrivateHome::scratch_directory() + path);
}

std::string preferences(const char* config, const char* home)
{
    config ? setenv("XDG_CONFIG_HOME", config, 1) : unsetenv("XDG_CONFIG_HOME");
    home ? setenv("HOME", home, 1) : unsetenv("HOME");
    return SystemPaths::user_preferences_path();
}

std::string temporary(const char* value)
{
    value ? setenv("TMPDIR", value, 1) : unsetenv("TMPDIR");
    return SystemPaths::temporary_path();
}

} // namespace

TEST(SystemPaths, PreferencesFollowTheConfigurationDirectory)
{
    EXPECT_EQ(preferences("/c/config", "/h"), "file:///c/config/tarqa/");
    EXPECT_EQ(preferences("/c/config///", "/h"), "file:///c/config/tarqa/");
    EXPECT_EQ(preferences("/", "/h"), "file:///tarqa/");
}

TEST(SystemPaths, PreferencesWithoutAnAbsoluteConfigurationDirectoryAreInTheHome)
{
    for (const char* config :
        {static_cast<const char*>(nullptr), "", "relative/config", "~", ".", "\xff\x01"}) {
        EXPECT_EQ(preferences(config, "/h"), "file:///h/.config/tarqa/");
    }
    EXPECT_EQ(preferences("", "/h/"), "file:///h/.config/tarqa/");
    EXPECT_EQ(preferences("", "/"), "file:///.config/tarqa/");
}

TEST(SystemPaths, PreferencesWithoutAUsableHomeAreInTheHomeOfThePasswordDatabase)
{
    const passwd* const p_entry = getpwuid(geteuid());
    ASSERT_NE(p_entry, nullptr);
    const std::string wanted = filesystem_to_url(std::string(p_entry->pw_dir) + "/.config/tarqa/");
    for (const char* home : {static_cast<const char*>(nullptr), "", "relative", "~"}) {
        EXPECT_EQ(preferences("relative", home), wanted);
    }
}

TEST(SystemPaths, PreferencesMayHoldAnyByte)
{
    const std::string path = "/with blank/Gel\xc3\xa4nde/no utf-8 \xff\xfe/100%";
    const std::string url = preferences(path.c_str(), nullptr);
    EXPECT_EQ(url, "file:///with%20blank/Gel%C3%A4nde/no%20utf-8%20%FF%FE/100%25/tarqa/");
    EXPECT_EQ(url_to_filesystem(url), path + "/tarqa/");
}

TEST(SystemPaths, PreferencesOfAHugePathAreGivenWhole)
{
    const std::string path = "/" + std::string(100 * 1024, 'x');
    EXPECT_EQ(preferences(path.c_str(), nullptr), "file://" + path + "/tarqa/");
}

TEST(SystemPaths, NothingIsCreated)
{
    const std::string config = support::PrivateHome::scratch_directory() + "/config";
    preferences(config.c_str(), nullptr);
    const std::string tmp = support::PrivateHome::scratch_directory() + "/tmp";
    temporary(tmp.c_str());
    SystemPaths::installation_root_path();
    EXPECT_TRUE(fs::is_empty(support::PrivateHome::scratch_directory()));
}

TEST(SystemPaths, TemporaryPathIsTheVariableIfAbsoluteElseTheSystems)
{
    EXPECT_EQ(temporary("/var/tmp"), "file:///var/tmp/");
    EXPECT_EQ(temporary("/var/tmp//"), "file:///var/tmp/");
    EXPECT_EQ(temporary("/"), "file:///");
    EXPECT_EQ(temporary("////"), "file:///");
    EXPECT_EQ(temporary("/\xff"), "file:///%FF/");
    for (const char* value : {static_cast<const char*>(nullptr), "", "tmp", "./tmp", "C:\\Temp", "\n"}) {
        EXPECT_EQ(temporary(value), "file:///tmp/");
    }
}

TEST(SystemPaths, InstallationRootIsTheParentOfTheFolderBin)
{
    EXPECT_EQ(root_of_program("prefix/bin/program"), scratch_url("/prefix/"));
    EXPECT_EQ(root_of_program("bin/bin/bin"), scratch_url("/bin/"));
}

TEST(SystemPaths, InstallationRootIsTheFolderOfTheProgramIfThatIsNotCalledBin)
{
    EXPECT_EQ(root_of_program("prefix/program"), scratch_url("/prefix/"));
    EXPECT_EQ(root_of_program("bin/tools/program"), scratch_url("/bin/tools/"));
    EXPECT_EQ(root_of_program("sbin/program"), scratch_url("/sbin/"));
    EXPECT_EQ(root_of_program("Bin/bin.exe"), scratch_url("/Bin/"));
}

TEST(SystemPaths, InstallationRootMayHoldAnyByte)
{
    EXPECT_EQ(root_of_program("Gel\xc3\xa4nde \xff%/bin/program"), scratch_url("/Gel\xc3\xa4nde \xff%/"));
}

TEST(SystemPaths, InstallationRootOfADeletedProgramIsWhereItWas)
{
    EXPECT_EQ(root_of_program("prefix/bin/program", "delete"), scratch_url("/prefix/"));
    EXPECT_FALSE(fs::exists(support::PrivateHome::scratch_directory() + "/prefix/bin/program"));
}

TEST(SystemPaths, LogIsOneLinePerPath)
{
    preferences("/c d", nullptr);
    temporary("/t");
    std::ostringstream stream;
    SystemPaths::write_to_log(stream);
    EXPECT_EQ(stream.str(),
        "Installation: " + url_to_filesystem(SystemPaths::installation_root_path())
            + "\nUser preferences: /c d/tarqa/\nTemporary files: /t/\n");
}
