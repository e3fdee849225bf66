#include "Guides.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

// What the guides show is compiled: each block of C++ is a marked region of a source of this folder or of the
// examples.

namespace fs = std::filesystem;

using guides::Block;
using guides::blocks_of;
using guides::Lines;
using guides::Region;
using guides::regions_of;
using guides::shows;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const fs::path s_sources(HK_SOURCE_DIRECTORY);
const std::set<std::string> s_languages = {"", "cmake", "cpp", "ini", "json", "qml", "sh", "text"};

std::string text_of(const fs::path& file)
{
    std::ifstream stream(file);
    EXPECT_TRUE(stream) << file;
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<fs::path> files_below(const fs::path& folder, const std::set<std::string>& suffixes)
{
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (suffixes.count(entry.path().extension().string()) > 0) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<fs::path> all_guides()
{
    std::vector<fs::path> files = files_below(s_sources / "docs", {".md"});
    files.push_back(s_sources / "README.md");
    files.push_back(s_sources / "CONTRIBUTING.md");
    return files;
}

std::vector<Region> regions_below(const char* folder)
{
    std::vector<Region> all;
    for (const fs::path& file : files_below(s_sources / folder, {".cpp", ".h"})) {
        const std::vector<Region> regions = regions_of(text_of(file));
        all.insert(all.end(), regions.begin(), regions.end());
    }
    return all;
}

std::string joined(const Lines& lines)
{
    std::string text;
    for (const std::string& line : lines) {
        text += line + '\n';
    }
    return text;
}

} // namespace

// The guides

TEST(Guides, ShowOnlyCodeThatIsCompiled)
{
    std::vector<Region> regions = regions_below("tests/snippets");
    const std::vector<Region> of_examples = regions_below("examples");
    regions.insert(regions.end(), of_examples.begin(), of_examples.end());
    int blocks = 0;
    for (const fs::path& guide : all_guides()) {
        for (const Block& block : blocks_of(text_of(guide))) {
            EXPECT_EQ(s_languages.count(block.language), 1U)
                << guide << ", line " << block.line << ": is \"" << block.language
                << "\" C++? Then call it \"cpp\".";
            if (block.language != "cpp") {
                continue;
            }
            ++blocks;
            EXPECT_TRUE(std::any_of(regions.begin(), regions.end(),
                [&block](const Region& region) { return shows(block.lines, region.lines); }))
                << guide << ", line " << block.line << ": no marked region of a source is this:\n"
                << joined(block.lines);
        }
    }
    EXPECT_GE(blocks, 18); // else they were not found
}

TEST(Guides, ShowEverySnippet)
{
    std::vector<Block> blocks;
    for (const fs::path& guide : all_guides()) {
        const std::vector<Block> more = blocks_of(text_of(guide));
        blocks.insert(blocks.end(), more.begin(), more.end());
    }
    for (const Region& region : regions_below("tests/snippets")) {
        EXPECT_TRUE(std::any_of(blocks.begin(), blocks.end(),
            [&region](const Block& block) { return shows(block.lines, region.lines); }))
            << "no guide shows [" << region.name << "]";
    }
}

TEST(Guides, SnippetsAreBuilt)
{
    const std::string list = text_of(s_sources / "tests/snippets/CMakeLists.txt");
    const std::vector<fs::path> files = files_below(s_sources / "tests/snippets", {".cpp"});
    EXPECT_GE(files.size(), 10U);
    for (const fs::path& file : files) {
        const std::string name = fs::relative(file, s_sources / "tests/snippets").string();
        EXPECT_NE(list.find(name), std::string::npos) << name;
    }
}

// How they are read

TEST(GuideBlocks, HaveLanguageAndPlace)
{
    const std::vector<Block> blocks = blocks_of("text\n```cpp\nint i;\n```\n  ``` cmake\n```\n");
    ASSERT_THAT(blocks, SizeIs(2));
    EXPECT_EQ(blocks[0].language, "cpp");
    EXPECT_EQ(blocks[0].line, 2);
    EXPECT_THAT(blocks[0].lines, ElementsAre("int i;"));
    EXPECT_EQ(blocks[1].language, "cmake");
    EXPECT_THAT(blocks[1].lines, IsEmpty());
}

TEST(SourceRegions, MayLieInEachOther)
{
    const std::vector<Region> regions
        = regions_of("a\n//! [outer]\nb\n    //! [inner]\nc\n//! [inner]\n//! [outer]\nd\n//! no mark\n");
    ASSERT_THAT(regions, SizeIs(2));
    EXPECT_EQ(regions[0].name, "outer");
    EXPECT_THAT(regions[0].lines, ElementsAre("b", "c"));
    EXPECT_EQ(regions[1].name, "inner");
    EXPECT_THAT(regions[1].lines, ElementsAre("c"));
}

TEST(SourceRegions, NeedAnEnd)
{
    EXPECT_THROW(regions_of("//! [a]\nint i;\n"), std::runtime_error);
}

TEST(GuideBlocks, AreEqualButForCommonIndentation)
{
    EXPECT_TRUE(shows({"if (a) {", "    b();", "", "}"}, {"    if (a) {", "        b();", "", "    }"}));
    EXPECT_FALSE(shows({"if (a) {", "  b();", "", "}"}, {"    if (a) {", "        b();", "", "    }"}));
    EXPECT_FALSE(shows({"a();"}, {"a();", "b();"}));
    EXPECT_FALSE(shows({"a();", "b();"}, {"a();"}));
    EXPECT_FALSE(shows({"a();"}, {"b();"}));
}

TEST(GuideBlocks, LeaveOutWhatALineOfDotsStandsFor)
{
    const Lines region
        = {"class A", "{", "    int m_a;", "    int m_b;", "};", "", "void f()", "{", "    a();", "}"};
    EXPECT_TRUE(shows({"class A", "{", "    ...", "    int m_b;", "};", "...", "a();", "..."}, region));
    EXPECT_TRUE(shows({"class A", "{", "    // ...", "};", "", "// ... and then:", "}"}, region));
    EXPECT_TRUE(shows({"...", "int m_a;", "// … more", "a();", "..."}, region));
    EXPECT_TRUE(shows({"...", "};", "", "void f()", "..."}, region));
    EXPECT_FALSE(shows({"class A", "{", "    ..."}, {"class B", "{", "}"}));
    EXPECT_FALSE(shows({"...", "a();"}, region)); // the region goes on
    EXPECT_FALSE(shows({"int m_a;", "..."}, region)); // the region begins before
    EXPECT_FALSE(shows({"...", "int m_b;", "int m_a;", "..."}, region));
    EXPECT_FALSE(shows({"...", "int m_b;", "...", "int m_a;", "..."}, region)); // the order counts
    EXPECT_FALSE(shows({"class A", "{", "...", "    int m_c;", "..."}, region));
    EXPECT_FALSE(shows({"a();", "...", "a();"}, {"a();"})); // one line is not shown twice
}
