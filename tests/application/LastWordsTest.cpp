#include "LogFiles.h"
#include "Probe.h"
#include "support/PlantedFile.h"
#include "support/PrivateHome.h"
#include "support/Sanitizers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <utility>

#include <sys/stat.h>

// Runs of last_words_probe: what a host that dies says, where, and how it ends.

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

int count(const std::string& text, const std::string& part)
{
    int found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

/// A host that died in the way that the options name.
class DeadHost
{
public:
    explicit DeadHost(const std::vector<std::string>& options)
    {
        EXPECT_TRUE(m_probe.start(options)) << m_probe.error();
        m_signal = m_probe.wait_for_signal();
    }

    /// Whether it was this signal; the sanitizers make an end of their own of some.
    bool died_of(int number) const
    {
#ifdef HK_SANITIZED
        return m_signal == number || m_signal == 0;
#else
        return m_signal == number;
#endif
    }
    std::string file() const
    {
        return m_probe.fact("log") + ".lastwords";
    }
    std::string words() const
    {
        return log_files::read(file());
    }
    bool left_words() const
    {
        return fs::exists(file());
    }
    const std::string& error() const
    {
        return m_probe.error();
    }
    std::string log() const
    {
        return m_probe.log();
    }
    std::string fact(const std::string& name) const
    {
        return m_probe.fact(name);
    }

private:
    Probe m_probe;
    int m_signal = 0;
};

} // namespace

// How it dies

class LastWordsOf : public testing::TestWithParam<std::pair<std::string, int>>
{ };

TEST_P(LastWordsOf, TellTheSignalOnTheErrorStreamAndBesideTheLog)
{
    const auto& [way, number] = GetParam();
    std::string name = way;
    std::transform(name.begin(), name.end(), name.begin(), [](char c) { return std::toupper(c); });
    const DeadHost host({way});
    EXPECT_TRUE(host.died_of(number));
    EXPECT_THAT(host.words(), StartsWith("LAST WORDS of Tarq "));
    EXPECT_THAT(host.words(), HasSubstr("\nLog: " + host.fact("log") + "\n"));
    EXPECT_THAT(host.words(),
        HasSubstr("\nSignal: SIG" + (way == "abort" ? "ABRT" : name) + " (" + std::to_string(number) + ")"));
    EXPECT_THAT(host.words(), HasSubstr("\nRunning: no command\n"));
    EXPECT_THAT(host.words(), HasSubstr(" (the main thread)\n"));
    EXPECT_THAT(host.words(), HasSubstr("\nStack, the innermost function first:\n"));
    EXPECT_THAT(host.words(), HasSubstr("the_function_that_dies"));
    EXPECT_THAT(host.error(), HasSubstr(host.words()));
    EXPECT_EQ(count(host.words(), "LAST WORDS"), 1);
    EXPECT_THAT(host.log(), Not(HasSubstr("LAST WORDS")));
}

INSTANTIATE_TEST_SUITE_P(Signals, LastWordsOf,
    testing::Values(std::make_pair("segv", SIGSEGV), std::make_pair("bus", SIGBUS),
        std::make_pair("fpe", SIGFPE), std::make_pair("ill", SIGILL), std::make_pair("sys", SIGSYS),
        std::make_pair("trap", SIGTRAP), std::make_pair("abort", SIGABRT)),
    [](const auto& param) { return param.param.first; });

TEST(LastWords, TellTheAddress)
{
    EXPECT_THAT(DeadHost({"segv"}).words(), HasSubstr("\nSignal: SIGSEGV (11) at address 0x10\n"));
    EXPECT_THAT(DeadHost({"bus"}).words(), HasSubstr("\nSignal: SIGBUS (7)\n")); // which was raised
}

TEST(LastWords, TellAnExceptionThatNobodyCaught)
{
    const DeadHost host({"exception"});
    EXPECT_TRUE(host.died_of(SIGABRT));
    EXPECT_THAT(host.words(), HasSubstr("\nException that nobody caught: std::runtime_error: the reason\n"));
    EXPECT_THAT(host.words(), Not(HasSubstr(" (the main thread)")));
    EXPECT_THAT(host.error(), HasSubstr("terminate called after throwing")); // as without them
    EXPECT_THAT(
        DeadHost({"own"}).words(), HasSubstr("\nException that nobody caught: (anonymous namespace)::Own\n"));
}

TEST(LastWords, TellOfTerminateWithoutAnException)
{
    const DeadHost host({"terminate"});
    EXPECT_TRUE(host.died_of(SIGABRT));
    EXPECT_THAT(host.words(), HasSubstr("\nSignal: SIGABRT (6)\n"));
    EXPECT_THAT(host.words(), Not(HasSubstr("Exception that")));
}

TEST(LastWords, FollowAFatalMessageOfQt)
{
    const DeadHost host({"qfatal", "in=do"});
    EXPECT_TRUE(host.died_of(SIGABRT));
    EXPECT_THAT(host.words(), HasSubstr("\nRunning: do of command "));
    EXPECT_THAT(host.log(), StartsWith("FATAL ERROR!\nFurther Information: QtFatalMsg: the end"));
}

#ifndef HK_SANITIZED // which watch stacks themselves
TEST(LastWords, NeedNoStack)
{
    const DeadHost host({"overflow"});
    EXPECT_TRUE(host.died_of(SIGSEGV));
    EXPECT_THAT(host.words(), HasSubstr("\nSignal: SIGSEGV (11)"));
    const DeadHost worker({"overflow", "in=worker"});
    EXPECT_TRUE(worker.died_of(SIGSEGV));
    EXPECT_THAT(worker.words(), HasSubstr(", the one that died\n"));
}
#endif

TEST(LastWords, AreSaidOnceWhenSeveralThreadsDie)
{
    const DeadHost host({"segv", "twice"});
    EXPECT_TRUE(host.died_of(SIGSEGV));
    EXPECT_EQ(count(host.words(), "LAST WORDS"), 1);
    EXPECT_EQ(count(host.error(), "LAST WORDS"), 1);
    EXPECT_THAT(host.words(), EndsWith("\n\n")); // to their end
}

TEST(LastWords, AreNotSaidByAProgramThatEndsOtherwise)
{
    for (const char* way : {"kill", "exit", "end"}) {
        const DeadHost host({way});
        EXPECT_FALSE(host.left_words()) << way;
        EXPECT_EQ(count(host.error(), "LAST WORDS"), 0) << way;
    }
}

TEST(LastWords, AreOffUntilTheHostAsks)
{
    const DeadHost host({"segv", "off", "in=do"});
    EXPECT_TRUE(host.died_of(SIGSEGV));
    EXPECT_FALSE(host.left_words());
    EXPECT_EQ(count(host.error(), "LAST WORDS"), 0);
    EXPECT_EQ(host.fact("file"), "");
}

TEST(LastWords, MayBeAskedForTwice)
{
    const DeadHost host({"end"});
    EXPECT_EQ(host.fact("enabled"), "11");
    EXPECT_EQ(host.fact("file"), host.file());
}

TEST(LastWords, NeedNoApplication)
{
    const DeadHost host({"segv", "bare"});
    EXPECT_TRUE(host.died_of(SIGSEGV));
    EXPECT_THAT(host.words(), HasSubstr("\nSignal: SIGSEGV (11)"));
}

// What was running

TEST(LastWords, TellTheCommandAndItsDocument)
{
    const DeadHost host({"segv", "in=do"});
    EXPECT_THAT(host.fact("command"),
        HasSubstr("\"Fill \"sinks\" of Vall\xc3\xa9"
                  "e\" on document "));
    EXPECT_THAT(host.words(), HasSubstr("\nRunning: do " + host.fact("command")));
    EXPECT_THAT(host.words(), HasSubstr(", the one that died\n"));
    EXPECT_EQ(count(host.words(), "\nRunning: "), 1);
}

TEST(LastWords, TellTheCommandAfterManyOthers)
{
    const DeadHost host({"segv", "in=do", "many"});
    EXPECT_THAT(host.words(), HasSubstr("\nRunning: do " + host.fact("command")));
    EXPECT_EQ(count(host.words(), "\nRunning: "), 1);
}

TEST(LastWords, CutALongName)
{
    const DeadHost host({"segv", "in=do", "long"});
    EXPECT_THAT(host.words(), HasSubstr(" \"" + std::string(159, 'x') + "\" on document "));
}

TEST(LastWords, TellAnUndoAndARedo)
{
    for (const char* what : {"undo", "redo"}) {
        const DeadHost host({"segv", std::string("in=") + what});
        EXPECT_THAT(host.words(), HasSubstr(std::string("\nRunning: ") + what + ' ' + host.fact("command")));
    }
}

TEST(LastWords, TellTheThread)
{
    const DeadHost host({"segv", "in=worker"});
    EXPECT_THAT(host.words(), HasSubstr(", the one that died\n"));
    EXPECT_THAT(host.words(), Not(HasSubstr("(the main thread)")));
}

TEST(LastWords, TellACommandThatRanElsewhere)
{
    const DeadHost host({"segv", "elsewhere"});
    EXPECT_THAT(host.words(), HasSubstr("\nRunning: do " + host.fact("command")));
    EXPECT_THAT(host.words(), Not(HasSubstr("the one that died")));
    EXPECT_THAT(host.words(), HasSubstr("(the main thread)"));
}

TEST(LastWords, DoNotTellACommandThatHasEnded)
{
    EXPECT_THAT(DeadHost({"segv", "after"}).words(), HasSubstr("\nRunning: no command\n"));
}

// The file

TEST(LastWords, FileIsForThisUserOnly)
{
    const DeadHost host({"segv"});
    struct stat status = {};
    ASSERT_EQ(::stat(host.file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0600u);
}

TEST(LastWords, NobodyReadAreKept)
{
    const DeadHost first({"segv"});
    fs::remove(first.fact("log")); // so that the next run has a log of the same name
    const DeadHost second({"abort"});
    ASSERT_EQ(second.file(), first.file());
    EXPECT_EQ(count(second.words(), "LAST WORDS"), 2);
    EXPECT_THAT(second.words(), AllOf(HasSubstr("SIGSEGV"), HasSubstr("SIGABRT")));
}

TEST(LastWords, FullDiskLeavesTheErrorStream)
{
    Probe probe;
    probe.limit_files_to_nothing();
    ASSERT_TRUE(probe.start({"segv"}));
    probe.wait_for_signal();
    EXPECT_THAT(probe.error(), HasSubstr("\nSignal: SIGSEGV (11)"));
}

class LastWordsPlanted : public testing::TestWithParam<support::Planted>
{ };

INSTANTIATE_TEST_SUITE_P(Everything, LastWordsPlanted, support::everything_planted(), support::name_of);

TEST_P(LastWordsPlanted, InTheirPlaceIsUntouched)
{
    fs::create_directories(Probe::log_directory());
    const support::PlantedFile planted(Probe::home() + "/other");
    planted.plant(GetParam(), Probe::log_directory() + "/Tarq_1.log.lastwords");
    const DeadHost host({"segv"});
    EXPECT_TRUE(host.died_of(SIGSEGV));
    planted.expect_untouched(Probe::log_directory() + "/Tarq_1.log.lastwords");
    EXPECT_THAT(host.error(), HasSubstr("\nSignal: SIGSEGV (11)"));
}

TEST(LastWords, LinkInTheirPlaceIsNotFollowed)
{
    fs::create_directories(Probe::log_directory());
    const fs::path target = Probe::home() + "/target";
    fs::create_symlink(target, Probe::log_directory() + "/Tarq_1.log.lastwords");
    const DeadHost host({"segv"});
    EXPECT_TRUE(host.died_of(SIGSEGV));
    EXPECT_FALSE(fs::exists(target));
    EXPECT_THAT(host.error(), HasSubstr("\nSignal: SIGSEGV (11)"));
}
