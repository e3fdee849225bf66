#include "../application/LogFiles.h"
#include "faults/FaultRounds.h"
#include "support/ChildProcess.h"
#include "support/PrivateHome.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/LastWords.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <regex>
#include <string>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// What a dying program can say when the system refuses its calls.

namespace {

namespace fs = std::filesystem;
using faults::Fault;
using faults::Manner;
using faults::SystemFaults;
using support::ChildProcess;
using support::PrivateHome;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::LastWords;
using tarqa::housekeeping::TestAccess;

const std::size_t s_never = 1000000;
const std::size_t s_longer = 32; // what is left of numbers that were cut off

/// Hears the calls that a child of this process makes.
class Pipe
{
public:
    Pipe() { EXPECT_EQ(::pipe(m_ends), 0); }
    ~Pipe()
    {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int writing_end() const { return m_ends[1]; }
    /// What has been written so far.
    std::string content() const
    {
        ::fcntl(m_ends[0], F_SETFL, O_NONBLOCK);
        std::string text;
        char buffer[4096];
        for (ssize_t count = 0; (count = ::read(m_ends[0], buffer, sizeof buffer)) > 0;) {
            text.append(buffer, static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    int m_ends[2] = {-1, -1};
};

/// What a program that dies leaves.
struct Dead
{
    std::string words; ///< in the file
    std::string said; ///< on the standard error stream
};

Dead die(std::size_t at, const Fault& fault, const std::string& path_part)
{
    const Pipe errors;
    ChildProcess child([&] {
        const rlimit no_core = {};
        ::setrlimit(RLIMIT_CORE, &no_core);
        ::dup2(errors.writing_end(), STDERR_FILENO);
        LastWords::enable();
        new SystemFaults(path_part, at, fault); // until the end
        std::raise(SIGABRT);
        return std::string("survived");
    });
    EXPECT_EQ(child.report(), "");
    siginfo_t end = {};
    EXPECT_EQ(::waitid(P_PID, static_cast<id_t>(child.id()), &end, WEXITED | WNOWAIT), 0);
    EXPECT_EQ(end.si_code, CLD_KILLED);
    EXPECT_EQ(end.si_status, SIGABRT);
    return {log_files::read(log_files::path(1) + ".lastwords"), errors.content()};
}

/// The words are different at each death: the process, the time, and where this program calls from.
std::string without_differences(std::string words)
{
    words = std::regex_replace(words, std::regex("0x[0-9a-f]+"), "PLACE");
    words = std::regex_replace(words, std::regex("Process: [0-9]+, thread [0-9]+"), "Process: ID, thread ID");
    return std::regex_replace(words, std::regex("1970: [0-9]+"), "1970: TIME");
}

class LastWordsUnderFaults : public testing::Test
{
protected:
    LastWordsUnderFaults() { ErrorProtocol::instance(); }
    ~LastWordsUnderFaults() override
    {
        TestAccess::destroy<ErrorProtocol>();
        fs::remove_all(PrivateHome::log_directory());
    }
};

} // namespace

TEST_F(LastWordsUnderFaults, AreWholeAfterShortWritesAndNeverKeepTheProgramFromDying)
{
    const std::string file = log_files::path(1) + ".lastwords";
    const std::string log = log_files::read(log_files::path(1));
    const Dead first = die(s_never, Fault(), ".lastwords");
    const std::string whole = without_differences(first.words);
    ASSERT_NE(whole.find("Signal: SIGABRT (6)"), std::string::npos) << whole;
    EXPECT_EQ(without_differences(first.said), whole);

    std::size_t points = 0;
    std::size_t rounds = 0;
    std::size_t survived = 0;
    bool reached = true;
    const Fault all_faults[] = {{Manner::Short, 0}, {Manner::Once, EINTR}, {Manner::Once, EIO},
        {Manner::FromThenOn, ENOSPC}, {Manner::ShortThenError, ENOSPC}, {Manner::FromThenOn, EMFILE}};
    for (std::size_t at = 0; reached && at < 500; ++at) {
        reached = false;
        for (const Fault& fault : all_faults) {
            SCOPED_TRACE("call " + std::to_string(at) + ", " + text(fault));
            const int failed_before = faults::failed_checks();
            fs::remove(file);
            const Dead dead = die(at, fault, ".lastwords");
            const std::string words = without_differences(dead.words);
            const bool goes_over = fault.manner == Manner::Short || fault.error == EINTR;
            EXPECT_TRUE(goes_over ? words == whole : words.size() < whole.size() + s_longer) << words;
            // The other place is told all the same.
            EXPECT_EQ(without_differences(dead.said), whole);
            EXPECT_EQ(log_files::read(log_files::path(1)), log);
            reached = reached || words != whole;
            ++rounds;
            survived += faults::failed_checks() == failed_before ? 1 : 0;
        }
        points += reached ? 1 : 0;
    }
    EXPECT_GT(points, 10u);
    faults::report_fault_count("LastWords", points, rounds, survived);
}

TEST_F(LastWordsUnderFaults, AreInTheFileAlsoWhenNobodyHearsThem)
{
    const Dead first = die(s_never, Fault(), "pipe:");
    const std::string whole = without_differences(first.words);
    ASSERT_NE(whole.find("Signal: SIGABRT (6)"), std::string::npos);
    for (const Fault& fault : {Fault{Manner::FromThenOn, EIO}, Fault{Manner::ShortThenError, ENOSPC}}) {
        fs::remove(log_files::path(1) + ".lastwords");
        const Dead dead = die(0, fault, "pipe:");
        EXPECT_EQ(without_differences(dead.words), whole);
        EXPECT_NE(without_differences(dead.said), whole);
    }
}
