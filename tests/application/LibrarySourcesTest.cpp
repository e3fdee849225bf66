#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <string>
#include <vector>

// What holds for every source file of the libraries.

namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

typedef std::vector<std::string> Lines;

std::string contents_of(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

/// All headers and sources below a folder of the project.
std::vector<fs::path> sources_in(const std::string& folder)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(HK_SOURCE_DIRECTORY) / folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".h" || extension == ".cpp") {
            files.push_back(entry.path());
        }
    }
    return files;
}

/// The calls in @p code, which has no comments, that end the program when something is wrong with it.
Lines ends_of_the_program(const std::string& code)
{
    // Operations of objects may bear the same names: what a browser loads is aborted, a process terminated.
    static const std::regex s_call(
        "(^|[^A-Za-z0-9_.>])"
        "(assert|Q_ASSERT|Q_ASSERT_X|Q_CHECK_PTR|BOOST_ASSERT|BOOST_ASSERT_MSG"
        "|BOOST_VERIFY|CGAL_assertion|abort|terminate|_exit|_Exit|quick_exit|qFatal"
        "|Q_UNREACHABLE|__builtin_trap|__builtin_unreachable)\\s*\\(");
    Lines calls;
    for (std::sregex_iterator call(code.begin(), code.end(), s_call), end; call != end; ++call) {
        calls.push_back((*call)[2]);
    }
    return calls;
}

std::string without_comments(const std::string& text)
{
    std::string code;
    for (std::size_t at = 0; at < text.size();) {
        const std::string two = text.substr(at, 2);
        if (two == "//") {
            at = std::min(text.find('\n', at), text.size());
        } else if (two == "/*") {
            at = std::min(text.find("*/", at + 2), text.size() - 2) + 2;
        } else {
            code += text[at++];
        }
    }
    return code;
}

class LibrarySources : public testing::TestWithParam<std::string>
{ };

INSTANTIATE_TEST_SUITE_P(Libraries, LibrarySources,
    testing::Values("tq_utl", "pkBase", "pkBaseQt", "housekeeping"),
    [](const testing::TestParamInfo<std::string>& folder) { return folder.param; });

TEST_P(LibrarySources, NeverEndTheProgramOverAFailedCheck)
{
    const std::vector<fs::path> files = sources_in(GetParam());
    ASSERT_GE(files.size(), 8u) << "the sources were not read";
    for (const fs::path& file : files) {
        const std::string text = contents_of(file);
        EXPECT_FALSE(text.empty()) << file;
        EXPECT_THAT(ends_of_the_program(without_comments(text)), IsEmpty()) << file;
        EXPECT_EQ(std::string::npos, text.find("#include <cassert>")) << file;
        EXPECT_EQ(std::string::npos, text.find("#include <assert.h>")) << file;
        EXPECT_EQ(std::string::npos, text.find("#include <boost/assert.hpp>")) << file;
    }
}

TEST(LibrarySourcesEnds, AreFound)
{
    EXPECT_THAT(ends_of_the_program(R"(
        assert(p_object);
        Q_ASSERT(p_object); Q_ASSERT_X(a, "b", "c");
        if (!valid) std::abort();
        ::abort ();
        BOOST_ASSERT(!null);
        static_assert(sizeof(int) == 4);
        HK_ASSERT(p_object, "p_object");
        ErrorProtocol::instance().log_assert(text, function, source, line);
        p_reply->abort();
        process.terminate();
    )"),
        testing::ElementsAre("assert", "Q_ASSERT", "Q_ASSERT_X", "abort", "abort", "BOOST_ASSERT"));
    EXPECT_THAT(ends_of_the_program(
                    without_comments("// abort()\n/* assert(a)\n * abort() */ int a; /** abort() */")),
        IsEmpty());
}

/// The checks of all of the start-up name one source.
const std::map<std::string, std::string> s_others_names
    = {{"QTarqaApplication", "ApplicationManager"}, {"ThreadLocal", "ApplicationManager"}};

TEST(LibrarySourcesNames, StandInTheErrorLogAsThoseOfTheirClasses)
{
    static const std::regex s_name("s_source = \"([^\"]*)\"");
    int count = 0;
    for (const std::string folder : {"housekeeping/src", "housekeeping/gui/src"}) {
        for (const fs::path& file : sources_in(folder)) {
            const std::string text = contents_of(file);
            const std::string stem = file.stem().string();
            std::smatch found;
            const bool has_name = std::regex_search(text, found, s_name);
            if (stem != "Assertion") {
                EXPECT_EQ(has_name, text.find("HK_ASSERT") != std::string::npos) << file;
            }
            if (has_name) {
                ++count;
                const auto other = s_others_names.find(stem);
                const std::string name = other == s_others_names.end() ? stem : other->second;
                EXPECT_EQ(folder + "/" + name, found[1]) << file;
            }
        }
    }
    EXPECT_GE(count, 20) << "the sources were not read";
}

} // namespace
