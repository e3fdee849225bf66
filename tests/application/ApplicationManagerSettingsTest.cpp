#include "SettingsTable.h"
#include "StoredSettings.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"
#include "support/StartedApplication.h"

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace fs = std::filesystem;

using stored_settings::in_new_application;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Not;

namespace {

typedef std::map<std::string, std::string> Entries;

/// What every setting reads, by its key.
Entries all_values(const ApplicationManager& manager)
{
    Entries values;
    for (const Setting& setting : settings_table()) {
        values[setting.key] = setting.get(manager);
    }
    return values;
}

Entries all_initial_values()
{
    Entries values;
    for (const Setting& setting : settings_table()) {
        values[setting.key] = setting.initial;
    }
    return values;
}

/// The names of all files in the private home, but for temporary ones.
std::vector<std::string> files_in_the_home()
{
    const fs::path root = fs::path(support::PrivateHome::scratch_directory()).parent_path();
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const bool temporary = entry.path().string().rfind((root / "tmp").string(), 0) == 0;
        if (entry.is_regular_file() && !temporary) {
            names.push_back(entry.path().filename().string());
        }
    }
    return names;
}

} // namespace

// Every row of the table

TEST(ApplicationManagerSetting, HasItsDefaultWithNothingStored)
{
    const StartedApplication started;
    EXPECT_EQ(all_initial_values(), all_values(started.manager()));
}

TEST(ApplicationManagerSetting, IsStoredAtOnceUnderItsKeyAlone)
{
    const StartedApplication started;
    for (const Setting& setting : settings_table()) {
        SCOPED_TRACE(setting.key);
        std::vector<std::string> values = setting.others;
        values.push_back(setting.initial);
        for (const std::string& value : values) {
            setting.set(started.manager(), value);
            EXPECT_EQ(value, setting.get(started.manager()));
            EXPECT_EQ(stored_settings::entries(), (Entries{{setting.path(), value}}));
        }
        fs::remove(stored_settings::path());
    }
}

TEST(ApplicationManagerSetting, ChangesNoOtherSetting)
{
    const StartedApplication started;
    for (const Setting& setting : settings_table()) {
        SCOPED_TRACE(setting.key);
        setting.set(started.manager(), setting.others.front());
        Entries expected = all_initial_values();
        expected[setting.key] = setting.others.front();
        if (setting.key == "shader_rendering") {
            expected["seismicRenderQuality"] = "0";
        }
        EXPECT_EQ(expected, all_values(started.manager()));
        setting.set(started.manager(), setting.initial);
    }
}

TEST(ApplicationManagerSetting, IsKnownToTheNextProcess)
{
    for (const Setting& setting : settings_table()) {
        SCOPED_TRACE(setting.key);
        for (const std::string& value : setting.others) {
            const std::string first = in_new_application([&](ApplicationManager& manager) {
                setting.set(manager, value);
                return setting.get(manager);
            });
            EXPECT_EQ(value, first);
            const std::string second
                = in_new_application([&](ApplicationManager& manager) { return setting.get(manager); });
            EXPECT_EQ(setting.read_back ? value : setting.initial, second);
            EXPECT_EQ(stored_settings::entries(), (Entries{{setting.path(), value}}));
        }
        fs::remove(stored_settings::path());
    }
}

TEST(ApplicationManagerSetting, IsReadFromItsKeyAlone)
{
    std::string content;
    for (const std::string group :
        {"General", "application", "performance_options", "viewer_options", "animation_tool"}) {
        content += "[" + group + "]\n";
        for (const Setting& setting : settings_table()) {
            // In its own group under another key, in the others under its own.
            const std::string end = group == setting.group ? "_=" : "=";
            content += setting.key + end + setting.others.front() + "\n";
        }
    }
    stored_settings::write(content);
    const StartedApplication started;
    EXPECT_EQ(all_initial_values(), all_values(started.manager()));
}

TEST(ApplicationManagerSetting, MayBeSetBeforeTheApplicationIsStarted)
{
    ApplicationManager& manager = ApplicationManager::instance();
    for (const Setting& setting : settings_table()) {
        SCOPED_TRACE(setting.key);
        support::LogCapture log; // nobody has said yet whose settings they are
        for (const std::string& value : setting.others) {
            setting.set(manager, value);
            EXPECT_EQ(value, setting.get(manager));
            EXPECT_TRUE(log.take("The setting \"" + setting.path() + "\" could not be stored in "));
        }
    }
    EXPECT_THAT(files_in_the_home(), ElementsAre("Tarq_1.log"));
    const StartedApplication started;
    for (const Setting& setting : settings_table()) {
        SCOPED_TRACE(setting.key);
        const bool untouched
            = setting.key == "useToolboxAutoSelect" || setting.key == "useOptimizedFlowpaths";
        EXPECT_EQ(untouched ? setting.others.back() : setting.initial, setting.get(manager));
    }
    EXPECT_THAT(files_in_the_home(), Not(Contains(EndsWith(".conf"))));
}

// The table as a whole

TEST(ApplicationManagerSettings, StartStoresNothing)
{
    const StartedApplication started;
    EXPECT_FALSE(stored_settings::exists());
}

TEST(ApplicationManagerSettings, StartKeepsWhatItDoesNotKnow)
{
    stored_settings::write("[viewer_options]\nanimate_jumps=false\nfrom_the_future=7\n[other]\nkey=text\n");
    const StartedApplication started;
    started.manager().setUseShaderRendering(false);
    EXPECT_EQ(stored_settings::entries(),
        (Entries{{"viewer_options/animate_jumps", "false"}, {"viewer_options/from_the_future", "7"},
            {"viewer_options/shader_rendering", "false"}, {"other/key", "text"}}));
}

TEST(ApplicationManagerSettings, EndStoresNothing)
{
    const StartedApplication started;
    started.manager().setUseShaderRendering(false);
    started.manager().setLinkToFFMPEG("/usr/bin/ffmpeg");
    ASSERT_TRUE(fs::remove(stored_settings::path()));
    pkBase::pkDestructor::run();
    EXPECT_FALSE(stored_settings::exists());
}

TEST(ApplicationManagerSettings, AllAreKnownToTheNextProcess)
{
    Entries expected;
    Entries stored;
    for (const Setting& setting : settings_table()) {
        expected[setting.key] = setting.read_back ? setting.others.front() : setting.initial;
        stored[setting.path()] = setting.others.front();
    }
    expected["seismicRenderQuality"] = "0"; // shader rendering is off
    const std::string nothing = in_new_application([](ApplicationManager& manager) {
        for (const Setting& setting : settings_table()) {
            setting.set(manager, setting.others.front());
        }
        return std::string();
    });
    EXPECT_EQ("", nothing);
    EXPECT_EQ(stored, stored_settings::entries());
    const StartedApplication started;
    EXPECT_EQ(expected, all_values(started.manager()));
    EXPECT_EQ(stored, stored_settings::entries());
}

TEST(ApplicationManagerSettings, UniqueObjectNamesAreOnAtEveryStart)
{
    stored_settings::write("application", "create_unique_object_names", "false");
    const StartedApplication started;
    EXPECT_TRUE(started.manager().createUniqueObjectNames());
    EXPECT_EQ(stored_settings::entries(), (Entries{{"application/create_unique_object_names", "false"}}));
}

TEST(ApplicationManagerSettings, EntityIdsIgnoreTheKeyOfEarlierVersions)
{
    stored_settings::write("application", "showEntityIds", "false");
    const StartedApplication started;
    EXPECT_TRUE(started.manager().showEntityIds());
}

TEST(ApplicationManagerSettings, BothViewersOfSymbolSizesAreTwoSettings)
{
    const StartedApplication started;
    started.manager().setUseMetricSymbolSize(true);
    started.manager().setUseMetricSymbolSize3d(false);
    EXPECT_EQ(stored_settings::entries(),
        (Entries{{"viewer_options/use_metric_symbol_size", "true"},
            {"viewer_options/use_metric_symbol_size_3dview", "false"}}));
}

// Where they are stored

TEST(ApplicationManagerSettings, BelongToTheProductAndItsMaker)
{
    pkBase::pkProductInfo::instance().organization_name("Velmor");
    pkBase::pkProductInfo::instance().product_name("Terrain");
    const StartedApplication started;
    EXPECT_EQ("Velmor", QCoreApplication::organizationName());
    EXPECT_EQ("Terrain", QCoreApplication::applicationName());
    started.manager().setUseShaderRendering(false);
    EXPECT_TRUE(fs::exists(std::string(std::getenv("XDG_CONFIG_HOME")) + "/Velmor/Terrain.conf"));
    EXPECT_FALSE(stored_settings::exists());
}

TEST(ApplicationManagerSettings, NamesThatTheHostHasChosenStay)
{
    QCoreApplication::setOrganizationName("Chosen");
    QCoreApplication::setApplicationName("Host");
    const StartedApplication started;
    EXPECT_EQ("Chosen", QCoreApplication::organizationName());
    EXPECT_EQ("Host", QCoreApplication::applicationName());
    started.manager().setUseShaderRendering(false);
    EXPECT_TRUE(fs::exists(std::string(std::getenv("XDG_CONFIG_HOME")) + "/Chosen/Host.conf"));
    EXPECT_FALSE(stored_settings::exists());
}

TEST(ApplicationManagerSettings, SetBeforeTheStartAreStoredWhereTheHostHasChosenNames)
{
    QCoreApplication::setOrganizationName("Tarqa");
    QCoreApplication::setApplicationName("Tarq");
    ApplicationManager::instance().setAnimateCameraJumps(false);
    EXPECT_EQ(stored_settings::entries(), (Entries{{"viewer_options/animate_jumps", "false"}}));
    const StartedApplication started;
    EXPECT_FALSE(started.manager().animateCameraJumps());
}

// The path of FFmpeg

TEST(ApplicationManagerSettings, EveryPathOfFFmpegSurvives)
{
    const std::vector<std::string> paths = {"/opt/Z\xc3\xbcrich/ffmpeg",
        "/\xe6\x97\xa5\xe6\x9c\xac/\xf0\x9f\x98\x80", "C:\\Program Files\\new\\x41\\ffmpeg.exe",
        "100%/%20/%1/%U/ff%%mpeg", "a,b, c,", "; comment = # no", " blanks  in front and behind ",
        "\"in quotes\"", "half a \" quote", "@Invalid()", "@@at", "@ByteArray(x)", "line\nbreak\ttab\r",
        "[group]", "true", "0", "../relative", std::string(5000, 'n')};
    for (const std::string& path : paths) {
        in_new_application([&](ApplicationManager& manager) {
            manager.setLinkToFFMPEG(QString::fromStdString(path));
            EXPECT_EQ(path, manager.linkToFFMPEG().toStdString());
            return std::string();
        });
        EXPECT_EQ(path, in_new_application([](ApplicationManager& manager) {
            return manager.linkToFFMPEG().toStdString();
        }));
    }
}

TEST(ApplicationManagerSettings, EmptyPathOfFFmpegReplacesTheOldOne)
{
    const StartedApplication started;
    started.manager().setLinkToFFMPEG("/usr/bin/ffmpeg");
    started.manager().setLinkToFFMPEG(QString());
    EXPECT_TRUE(started.manager().linkToFFMPEG().isEmpty());
    const Entries stored = stored_settings::entries();
    EXPECT_NE("/usr/bin/ffmpeg", stored.at("animation_tool/pathToFFmpegExecutable"));
}

// What is not stored

TEST(ApplicationManagerSettings, ResetOfIdsIsNotStored)
{
    {
        const StartedApplication started;
        EXPECT_FALSE(started.manager().resetIdsOnOpen());
        started.manager().setResetIdsOnOpen(true);
        EXPECT_TRUE(started.manager().resetIdsOnOpen());
        EXPECT_FALSE(stored_settings::exists());
        started.manager().setResetIdsOnOpen(false);
        EXPECT_FALSE(started.manager().resetIdsOnOpen());
    }
    EXPECT_FALSE(stored_settings::exists());
}

TEST(ApplicationManagerSettings, SuspensionIsNotStored)
{
    const StartedApplication started;
    started.manager().setSuspended(true);
    EXPECT_FALSE(stored_settings::exists());
}

TEST(ApplicationManagerSettings, GraphicsCapabilitiesAreNotStored)
{
    const StartedApplication started;
    ApplicationManager& manager = started.manager();
    manager.setGlTest(true);
    manager.setGLVersion(4.5f);
    manager.setGlRenderer("Gallium");
    manager.setGlslAvail(true);
    manager.setTotalGraphicsMemory(4096);
    EXPECT_FALSE(stored_settings::exists());
}

// The modifier that the mouse modes pair with

TEST(ApplicationManagerSettings, ModifierIsAlwaysTheSame)
{
    const StartedApplication started;
    for (const int mode : {0, 1, 2}) {
        started.manager().setMouseMode(static_cast<tarqa::housekeeping::MouseMode>(mode));
        EXPECT_EQ(Qt::AltModifier, started.manager().keyboardModifier());
        EXPECT_EQ("Alt", started.manager().modifierKeyName());
    }
}
