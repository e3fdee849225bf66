#include <tarqa/utilities/Url.h>

#include "support/PrivateHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using tarqa::utilities::file_from_url;
using tarqa::utilities::filesystem_to_url;
using tarqa::utilities::url_to_filesystem;

namespace {

std::string there_and_back(const std::string& path)
{
    return url_to_filesystem(filesystem_to_url(path));
}

} // namespace

TEST(Url, OfAnAbsolutePathHasThreeSlashes)
{
    EXPECT_EQ(filesystem_to_url("/data/a.dat"), "file:///data/a.dat");
    EXPECT_EQ(filesystem_to_url("/"), "file:///");
    EXPECT_EQ(filesystem_to_url("/data/"), "file:///data/");
    EXPECT_EQ(url_to_filesystem("file:///data/a.dat"), "/data/a.dat");
    EXPECT_EQ(url_to_filesystem("file:///"), "/");
}

TEST(Url, OfADriveLetterPathHasThreeSlashesAndNoBackslash)
{
    EXPECT_EQ(filesystem_to_url("C:/data/a.dat"), "file:///C:/data/a.dat");
    EXPECT_EQ(filesystem_to_url("C:\\data\\a b.dat"), "file:///C:/data/a%20b.dat");
    EXPECT_EQ(filesystem_to_url("z:"), "file:///z:");
    EXPECT_EQ(url_to_filesystem("file:///C:/data/a.dat"), "C:/data/a.dat");
    EXPECT_EQ(url_to_filesystem("file:///z:"), "z:");
    EXPECT_EQ(url_to_filesystem("file://C:/data/a.dat"), "C:/data/a.dat");
}

TEST(Url, OfAFolderThatLooksLikeADriveComesBackAsTheFolder)
{
    EXPECT_EQ(filesystem_to_url("/C:/data"), "file:///C%3A/data");
    EXPECT_EQ(there_and_back("/C:/data"), "/C:/data");
    EXPECT_EQ(there_and_back("/C:"), "/C:");
    EXPECT_EQ(filesystem_to_url("/C:data"), "file:///C:data");
    EXPECT_EQ(there_and_back("/C:data"), "/C:data");
    EXPECT_EQ(filesystem_to_url("/data/C:/x"), "file:///data/C:/x");
}

TEST(Url, OfARelativePathIsThatOfTheAbsoluteOne)
{
    const std::string here = support::PrivateHome::scratch_directory();
    std::filesystem::current_path(here);
    EXPECT_EQ(filesystem_to_url("a.dat"), "file://" + here + "/a.dat");
    EXPECT_EQ(filesystem_to_url("./b/../a.dat"), "file://" + here + "/./b/../a.dat");
    EXPECT_EQ(filesystem_to_url("C:a.dat"), "file://" + here + "/C:a.dat");
    EXPECT_EQ(filesystem_to_url("1:/a"), "file://" + here + "/1:/a");
    std::filesystem::current_path("/");
    EXPECT_EQ(filesystem_to_url("a.dat"), "file:///a.dat");
    EXPECT_EQ(there_and_back("C:a.dat"), "/C:a.dat");
}

TEST(Url, OfARelativePathInADeletedDirectoryIsMadeAllTheSame)
{
    const std::string gone = support::PrivateHome::scratch_directory() + "/gone";
    std::filesystem::create_directory(gone);
    std::filesystem::current_path(gone);
    std::filesystem::remove(gone);
    EXPECT_EQ(filesystem_to_url("a.dat"), "file:///a.dat");
}

TEST(Url, OfNothingIsNothing)
{
    EXPECT_EQ(filesystem_to_url(""), "");
    EXPECT_EQ(url_to_filesystem(""), "");
    EXPECT_EQ(url_to_filesystem("file://"), "");
    EXPECT_EQ(file_from_url(""), "");
}

TEST(Url, KeepsWhatAPathMayHoldAndEncodesTheRest)
{
    EXPECT_EQ(filesystem_to_url("/a-b._~!$&'()*+,;=:@Z9"), "file:///a-b._~!$&'()*+,;=:@Z9");
    EXPECT_EQ(filesystem_to_url("/a b?c#d%e[f]\"<>\\^`{|}"),
        "file:///a%20b%3Fc%23d%25e%5Bf%5D%22%3C%3E%5C%5E%60%7B%7C%7D");
    EXPECT_EQ(filesystem_to_url("/Gel\xc3\xa4nde"), "file:///Gel%C3%A4nde");
}

TEST(Url, BringsEveryByteBack)
{
    std::string path = "/";
    for (int byte = 0; byte < 256; ++byte) {
        path += static_cast<char>(byte);
    }
    EXPECT_EQ(there_and_back(path), path);
    EXPECT_EQ(filesystem_to_url(std::string("/a\0b\xff", 5)), "file:///a%00b%FF");
    EXPECT_EQ(there_and_back("/%41%zz%"), "/%41%zz%");
    EXPECT_EQ(there_and_back("//server/share/a b"), "//server/share/a b");
    EXPECT_EQ(there_and_back("/a//b/"), "/a//b/");
}

TEST(Url, BringsAHugePathBack)
{
    const std::string path = "/" + std::string(3 * 1024 * 1024, '\xe4');
    EXPECT_EQ(there_and_back(path), path);
}

TEST(Url, DecodesBothCasesAndLeavesBrokenEscapesAlone)
{
    EXPECT_EQ(url_to_filesystem("file:///a%2fb%2Fc"), "/a/b/c");
    EXPECT_EQ(url_to_filesystem("file:///100%"), "/100%");
    EXPECT_EQ(url_to_filesystem("file:///100%4"), "/100%4");
    EXPECT_EQ(url_to_filesystem("file:///100%zz%4g%41"), "/100%zz%4gA");
    EXPECT_EQ(url_to_filesystem("file:///%%41"), "/%A");
    EXPECT_EQ(url_to_filesystem("file:///a+b"), "/a+b");
}

TEST(Url, LeavesOutThisMachineAndKeepsAnother)
{
    EXPECT_EQ(url_to_filesystem("file://localhost/data/a.dat"), "/data/a.dat");
    EXPECT_EQ(url_to_filesystem("file://localhost/C:/a.dat"), "C:/a.dat");
    EXPECT_EQ(url_to_filesystem("file://server/share/a%20b.dat"), "//server/share/a b.dat");
    EXPECT_EQ(url_to_filesystem("file://a.dat"), "a.dat");
}

TEST(Url, TextsThatAreNoFileUrlStandForThemselves)
{
    for (const char* text : {"/data/a%20b.dat", "a.dat", "http://host/a%20b", "file:/a%20b", "file:", "FILE",
             " file:///a", "C:/a%20b"}) {
        EXPECT_EQ(url_to_filesystem(text), text);
        EXPECT_EQ(file_from_url(text), text);
    }
}

TEST(Url, FileOfAUrlIsItsPath)
{
    EXPECT_EQ(file_from_url("file:///C:/data/a%20b.dat"), "C:/data/a b.dat");
    EXPECT_EQ(file_from_url("file:///data/a.dat"), "/data/a.dat");
    EXPECT_EQ(file_from_url("untitled 1"), "untitled 1");
}
