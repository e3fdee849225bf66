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

// --- other programs

/// Where @p code, which has no comments, starts a program or asks the desktop to, with what the call begins
/// with; and calls of the functions that would start a shell.
Lines starts_of_programs(const std::string& code)
{
    static const std::regex s_call("(^|[^A-Za-z0-9_])"
                                   "((system|popen|wordexp|posix_spawnp?|exec[lv]p?e?|execvpe|fork|vfork"
                                   "|startDetached|openUrl|startCommand|WinExec|ShellExecute[A-Za-z]*"
                                   "|CreateProcess[A-Za-z]*) *\\([^;]*;|QProcess( +[a-z_]+|::execute))");
    Lines calls;
    for (std::sregex_iterator call(code.begin(), code.end(), s_call), end; call != end; ++call) {
        const std::string text = (*call)[2];
        if (text.find("system()") != 0) { // the system's language
            calls.push_back(text);
        }
    }
    return calls;
}

/// Everywhere, with the arguments as a list: no shell takes them apart. The addresses that are opened are
/// pages of the help, links that a user clicked on, and the form for a report.
const std::map<std::string, Lines> s_starts = {
    {"housekeeping/src/ApplicationManager.cpp", {"startDetached(arguments.first(), arguments);"}},
    {"housekeeping/gui/src/HelpManager.cpp", {"startDetached(program, arguments))"}},
    {"housekeeping/gui/src/OpenOutside.cpp", {"openUrl(address))"}},
    {"pkBaseQt/src/QPKAboutBox.cpp", {"openUrl(address))"}},
    {"examples/terrain/help/OutsideHelp.cpp", {"openUrl(opened))"}},
};

TEST(SourcesThatStartPrograms, AreTheseAndNoneUsesAShell)
{
    std::size_t read = 0;
    std::map<std::string, Lines> found;
    for (const std::string folder : {"tq_utl", "pkBase", "pkBaseQt", "housekeeping", "examples"}) {
        for (const fs::path& file : sources_in(folder)) {
            ++read;
            const Lines calls = starts_of_programs(without_comments(contents_of(file)));
            if (!calls.empty()) {
                found[fs::relative(file, HK_SOURCE_DIRECTORY).string()] = calls;
            }
        }
    }
    EXPECT_GE(read, 300u) << "the sources were not read";
    for (const auto& [file, calls] : found) {
        const auto known = s_starts.find(file);
        ASSERT_NE(s_starts.end(), known) << file << ": " << testing::PrintToString(calls);
        ASSERT_EQ(known->second.size(), calls.size()) << file;
        for (std::size_t i = 0; i < calls.size(); ++i) {
            EXPECT_EQ(0u, calls[i].find(known->second[i])) << file << ": " << calls[i];
        }
    }
    EXPECT_EQ(s_starts.size(), found.size());
}

TEST(SourcesThatStartPrograms, AreFound)
{
    EXPECT_THAT(starts_of_programs(R"(
        system("rm"); std::system(command); ::popen(command, "r"); execl("/bin/sh", "sh");
        QProcess::execute("a b"); command.execute(now); QProcess::startDetached("a b"); QProcess process; QLocale::system();
        QDesktopServices::openUrl(url); dialog.exec();)"),
        testing::ElementsAre("system(\"rm\");", "system(command);", "popen(command, \"r\");",
            "execl(\"/bin/sh\", \"sh\");", "QProcess::execute", "startDetached(\"a b\");", "QProcess process",
            "openUrl(url);"));
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
