#include "Probe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

typedef std::vector<std::string> Texts;

/// In the order in which they are added.
const Texts s_folders = {"bin/plugins", "Release/plugins", "RelWithDebInfo/plugins", "Debug/plugins",
    "bin/qml", "Release/qml", "RelWithDebInfo/qml", "Debug/qml"};

/// The library paths of a started probe that are below @p root.
Texts library_paths_below(const std::string& root, const Probe& probe)
{
    Texts paths;
    for (const std::string& path : probe.facts("library path")) {
        if (path.rfind(root + "/", 0) == 0 && path != root + "/bin") { // Qt adds the program's own folder
            paths.push_back(path);
        }
    }
    return paths;
}

/// What the option and the variable of this name hold.
Texts both(const Probe& probe, const std::string& name)
{
    return {probe.fact("option " + name), probe.fact("variable " + name)};
}

/// A probe in an installation of its own, without anybody's settings for GDAL and PROJ.
class InstalledProbe : public testing::Test
{
protected:
    InstalledProbe()
        : root(probe.install())
    {
        for (const char* name : {"GDAL_DATA", "GEOTIFF_CSV", "PROJ_LIB"}) {
            probe.unset(name);
        }
    }

    void make_folder(const std::string& name) { fs::create_directories(root + "/" + name); }
    void make_file(const std::string& name) { std::ofstream(root + "/" + name) << "content"; }

    Probe probe;
    const std::string root;
};

typedef InstalledProbe ApplicationManagerQtPaths;
typedef InstalledProbe ApplicationManagerGDALPaths;

const Texts s_unset = {"(unset)", "(unset)"};

} // namespace

// --- plug-ins and QML modules

TEST_F(ApplicationManagerQtPaths, LastOneAddedIsSearchedFirst)
{
    for (const std::string& folder : s_folders) {
        make_folder(folder);
    }
    ASSERT_TRUE(probe.start()) << probe.error();
    Texts expected;
    for (const std::string& folder : s_folders) {
        expected.insert(expected.begin(), root + "/" + folder);
    }
    EXPECT_EQ(library_paths_below(root, probe), expected);
    const Texts all = probe.facts("library path");
    EXPECT_EQ(all.front(), expected.front());
}

TEST_F(ApplicationManagerQtPaths, EachIsLoggedAsItIsSearched)
{
    for (const std::string& folder : s_folders) {
        make_folder(folder);
    }
    probe.unset("TARQ_NO_BACKGROUND_RENDERING");
    ASSERT_TRUE(probe.start());
    std::string expected;
    for (const std::string& path : probe.facts("library path")) {
        expected += "post-Qt init Path: " + path + "\n";
    }
    EXPECT_EQ(probe.entries(), expected + "Background rendering is ON\n");
}

TEST_F(ApplicationManagerQtPaths, MissingOnesAreDropped)
{
    make_folder("Release/plugins");
    make_folder("Debug/qml");
    ASSERT_TRUE(probe.start());
    EXPECT_THAT(
        library_paths_below(root, probe), ElementsAre(root + "/Debug/qml", root + "/Release/plugins"));
}

TEST_F(ApplicationManagerQtPaths, QtsOwnStay)
{
    ASSERT_TRUE(probe.start());
    EXPECT_THAT(library_paths_below(root, probe), IsEmpty());
    EXPECT_THAT(probe.facts("library path"), Not(IsEmpty()));
    EXPECT_EQ(probe.finish(), 0);
}

// --- data of GDAL and PROJ

TEST_F(ApplicationManagerGDALPaths, AreLeftAloneWithoutTheFolders)
{
    ASSERT_TRUE(probe.start());
    EXPECT_EQ(both(probe, "GDAL_DATA"), s_unset);
    EXPECT_EQ(both(probe, "GEOTIFF_CSV"), s_unset);
    EXPECT_EQ(both(probe, "PROJ_LIB"), s_unset);
}

TEST_F(ApplicationManagerGDALPaths, UsersOwnAreKeptWithoutTheFolders)
{
    probe.set("GDAL_DATA", "/the/user's");
    probe.set("GEOTIFF_CSV", "");
    probe.set("PROJ_LIB", "garbage \xff");
    ASSERT_TRUE(probe.start());
    EXPECT_EQ(both(probe, "GDAL_DATA"), Texts({"/the/user's", "/the/user's"}));
    EXPECT_EQ(probe.fact("variable GEOTIFF_CSV"), "");
    EXPECT_EQ(probe.fact("variable PROJ_LIB"), "garbage \xff");
}

TEST_F(ApplicationManagerGDALPaths, PointIntoTheInstallation)
{
    make_folder("data/GDAL_data");
    make_folder("data/PROJ_data");
    make_file("data/PROJ_data/proj.db");
    probe.set("GDAL_DATA", "/the/user's");
    ASSERT_TRUE(probe.start());
    const std::string gdal = root + "/data/GDAL_data/";
    const std::string proj = root + "/data/PROJ_data/";
    EXPECT_EQ(both(probe, "GDAL_DATA"), Texts({gdal, gdal}));
    EXPECT_EQ(both(probe, "GEOTIFF_CSV"), Texts({gdal, gdal}));
    EXPECT_EQ(both(probe, "PROJ_LIB"), Texts({proj, proj}));
}

TEST_F(ApplicationManagerGDALPaths, EachFolderCountsAlone)
{
    make_folder("data/GDAL_data");
    ASSERT_TRUE(probe.start());
    const std::string gdal = root + "/data/GDAL_data/";
    EXPECT_EQ(both(probe, "GDAL_DATA"), Texts({gdal, gdal}));
    EXPECT_EQ(both(probe, "GEOTIFF_CSV"), Texts({gdal, gdal}));
    EXPECT_EQ(both(probe, "PROJ_LIB"), s_unset);
}

TEST_F(ApplicationManagerGDALPaths, ProjectionsWithoutTheirDatabaseDoNotCount)
{
    make_folder("data/PROJ_data");
    ASSERT_TRUE(probe.start());
    EXPECT_EQ(both(probe, "PROJ_LIB"), s_unset);
}

TEST_F(ApplicationManagerGDALPaths, FileInTheFoldersPlaceDoesNotCount)
{
    make_folder("data");
    make_file("data/GDAL_data");
    ASSERT_TRUE(probe.start());
    EXPECT_EQ(both(probe, "GDAL_DATA"), s_unset);
    EXPECT_EQ(probe.finish(), 0);
}
