#include "../application/LogFiles.h"
#include "../host/FileSizeLimit.h"
#include "faults/FaultRounds.h"
#include "support/PrivateHome.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>
#include <tarqa/utilities/Exception.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include <sys/resource.h>

// What becomes of the error log when the system refuses its calls.

namespace {

namespace fs = std::filesystem;
using faults::Fault;
using faults::FaultRounds;
using faults::Manner;
using support::PrivateHome;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::ErrorProtocolOutput;
using tarqa::housekeeping::TestAccess;

const char* const s_before = "before\n";
const char* const s_after = "after\n";

/// Leaves no log behind, whose entries would count as unannounced.
class LogUnderFaults : public testing::Test
{
protected:
    ~LogUnderFaults() override { remove_logs(); }

    static void remove_logs()
    {
        TestAccess::destroy<ErrorProtocol>();
        fs::remove_all(PrivateHome::log_directory());
    }
};

/// A fault after which the call can be made again, or the rest be written.
bool goes_over(const Fault& fault)
{
    return fault.error == 0 || fault.error == EINTR;
}

bool is_prefix(const std::string& part, const std::string& whole)
{
    return whole.compare(0, part.size(), part) == 0;
}

/// @p content without its beginning and its end, which it must have.
std::string between(const std::string& content, const std::string& beginning, const std::string& end)
{
    const bool has_both = content.size() >= beginning.size() + end.size() && is_prefix(beginning, content)
        && content.compare(content.size() - end.size(), end.size(), end) == 0;
    EXPECT_TRUE(has_both) << content;
    return has_both ? content.substr(beginning.size(), content.size() - beginning.size() - end.size())
                    : std::string();
}

struct Entry
{
    const char* name;
    std::function<void(ErrorProtocol&)> write;
    const char* text;
    bool empties = false; ///< the log first
};

std::ostream& operator<<(std::ostream& stream, const Entry& entry)
{
    return stream << entry.name;
}

class EntryUnderFaults : public LogUnderFaults, public testing::WithParamInterface<Entry>
{ };

const Entry s_entries[] = {
    {"Message", [](ErrorProtocol& log) { log.log_message("the message"); }, "the message\n"},
    {"LongMessage", [](ErrorProtocol& log) { log.log_message("a\nb\nc\nd"); }, "a\nb\nc\nd\n"},
    {"Command", [](ErrorProtocol& log) { log.log_command("DO>\tFill - Succeeded.\n"); },
        "DO>\tFill - Succeeded.\n"},
    {"Assert", [](ErrorProtocol& log) { log.log_assert("expression", "function", "file", 7); },
        "file:7 ASSERT FAILED in function: expression\n"},
    {"StandardException", [](ErrorProtocol& log) { log.log_exception(std::runtime_error("reason")); },
        "STD EXCEPTION THROWN:reason\n\n"},
    {"FatalText", [](ErrorProtocol& log) { log.log_fatal_error("reason"); },
        "FATAL ERROR!\nFurther Information: reason\n\n", true},
    {"FatalStandardException", [](ErrorProtocol& log) { log.log_fatal_error(std::runtime_error("reason")); },
        "FATAL ERROR!\nCause: std::exception\nFurther Information: reason\n"},
    {"Output", [](ErrorProtocol&) { ErrorProtocolOutput() << "streamed " << 5ULL; }, "streamed 5\n"},
};

} // namespace

TEST_F(LogUnderFaults, IsOpenedOrDoesWithoutAndTakesLaterEntries)
{
    FaultRounds rounds("LogOpening", PrivateHome::log_directory());
    rounds.prepare = [] { remove_logs(); };
    rounds.act = [] { ErrorProtocol::instance(); };
    rounds.check = [](const Fault& fault) {
        EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(1));
        ErrorProtocol::instance().log_message("after");
        const std::string head = between(log_files::read(log_files::path(1)), "", s_after);
        EXPECT_PRED2(is_prefix, head, log_files::head());
        EXPECT_TRUE(head == log_files::head() || !goes_over(fault)) << head;
    };
    rounds.run();
}

TEST_F(LogUnderFaults, IsOpenedBesideOthersOrDoesWithout)
{
    FaultRounds rounds("LogOpeningBesideOthers", PrivateHome::log_directory());
    rounds.prepare = [] {
        remove_logs();
        log_files::make(1, 5, "of another run\n");
        log_files::make(2, 5, "of another run\n");
    };
    rounds.act = [] { ErrorProtocol::instance(); };
    rounds.check = [](const Fault&) {
        ErrorProtocol::instance().log_message("after");
        EXPECT_EQ(log_files::read(log_files::path(1)), "of another run\n");
        EXPECT_EQ(log_files::read(log_files::path(2)), "of another run\n");
        EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(3));
        EXPECT_PRED2(is_prefix, between(log_files::read(log_files::path(3)), "", s_after), log_files::head());
        EXPECT_EQ(log_files::names().size(), 3u);
    };
    rounds.run();
}

TEST_F(LogUnderFaults, OverwritesTheOldestOfTwentyAndNoOther)
{
    const std::string old = "of another run\n";
    FaultRounds rounds("LogOpeningOverTheOldest", PrivateHome::log_directory());
    rounds.prepare = [&] {
        remove_logs();
        for (int number = 1; number <= 20; ++number) {
            log_files::make(number, number == 7 ? 60 : 5, old);
        }
    };
    rounds.act = [] { ErrorProtocol::instance(); };
    rounds.check = [&](const Fault& fault) {
        EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(7));
        ErrorProtocol::instance().log_message("after");
        for (int number = 1; number <= 20; ++number) {
            if (number != 7) {
                EXPECT_EQ(log_files::read(log_files::path(number)), old);
            }
        }
        // The old log is whole while it cannot be emptied.
        const std::string head = between(log_files::read(log_files::path(7)), "", s_after);
        EXPECT_TRUE(is_prefix(head, log_files::head()) || head == old) << head;
        EXPECT_TRUE(head == log_files::head() || !goes_over(fault)) << head;
    };
    rounds.run();
}

TEST_P(EntryUnderFaults, IsWholeOrCutAndLaterOnesFollow)
{
    const Entry& entry = GetParam();
    FaultRounds rounds(std::string("LogEntry") + entry.name, PrivateHome::log_directory());
    rounds.prepare = [] {
        remove_logs();
        ErrorProtocol::instance().log_message("before");
    };
    rounds.act = [&] { EXPECT_NO_THROW(entry.write(ErrorProtocol::instance())); };
    rounds.check = [&](const Fault& fault) {
        ErrorProtocol::instance().log_message("after");
        const std::string content = log_files::read(log_files::path(1));
        const std::string start = log_files::head() + s_before;
        if (entry.empties && !is_prefix(start, content)) {
            const std::string written = between(content, "", s_after);
            EXPECT_PRED2(is_prefix, written, std::string(entry.text));
            EXPECT_TRUE(written == entry.text || !goes_over(fault)) << written;
            return;
        }
        const std::string written = between(content, start, s_after);
        EXPECT_PRED2(is_prefix, written, std::string(entry.text));
        EXPECT_TRUE(written == entry.text || !goes_over(fault)) << written;
    };
    rounds.run();
}

INSTANTIATE_TEST_SUITE_P(Every, EntryUnderFaults, testing::ValuesIn(s_entries),
    [](const auto& instance) { return instance.param.name; });

TEST_F(LogUnderFaults, CutsTheEntryAtTheLimitOfTheFile)
{
    ErrorProtocol& log = ErrorProtocol::instance();
    const std::string head = log_files::head();
    {
        const host_test::FileSizeLimit limit(head.size() + 10);
        log.log_message("123456789 123456789");
        log.log_message("nothing of this");
    }
    log.log_message("after");
    EXPECT_EQ(between(log_files::read(log.log_filename()), head, s_after), "123456789 ");
}

TEST_F(LogUnderFaults, WritesAgainWhenThereAreDescriptorsAgain)
{
    ErrorProtocol& log = ErrorProtocol::instance();
    log.log_message("before");
    rlimit old = {};
    getrlimit(RLIMIT_NOFILE, &old);
    rlimit none = old;
    none.rlim_cur = 3; // those of the standard streams
    setrlimit(RLIMIT_NOFILE, &none);
    for (const Entry& entry : s_entries) {
        entry.write(log);
    }
    setrlimit(RLIMIT_NOFILE, &old);
    log.log_message("after");
    EXPECT_EQ(log_files::read(log.log_filename()), log_files::head() + s_before + s_after);
}

TEST_F(LogUnderFaults, EndsWithItsBannerOrWithout)
{
    const std::string banner = "************** END OF ERROR LOG ***************\n";
    FaultRounds rounds("LogClosing", PrivateHome::log_directory());
    rounds.prepare = [] {
        remove_logs();
        ErrorProtocol::instance();
    };
    rounds.act = [] { TestAccess::destroy<ErrorProtocol>(); };
    rounds.check = [&](const Fault& fault) {
        const std::string end = between(log_files::read(log_files::path(1)), log_files::head(), "");
        EXPECT_PRED2(is_prefix, end, banner);
        EXPECT_TRUE(end == banner || !goes_over(fault)) << end;
    };
    rounds.run();
}

TEST_F(LogUnderFaults, ComesBackWhenItsDirectoryWasDeleted)
{
    ErrorProtocol& log = ErrorProtocol::instance();
    fs::remove_all(PrivateHome::log_directory());
    log.log_message("after");
    EXPECT_EQ(log_files::read(log_files::path(1)), s_after);
    EXPECT_EQ(fs::status(PrivateHome::log_directory()).permissions(), fs::perms::owner_all);
}
