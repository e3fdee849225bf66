#include "LogFiles.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/Exception.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using support::LogCapture;
using support::PrivateHome;
using tarqa::housekeeping::ErrorProtocol;

namespace fs = std::filesystem;

const uid_t s_nobody = 65534;

/// Leaves no log behind, since several files cannot be told apart afterwards.
class ErrorProtocolFile : public testing::Test
{
protected:
    ~ErrorProtocolFile() override { log_files::remove_all(); }
};

void log_everything()
{
    ErrorProtocol& log = ErrorProtocol::instance();
    log.log_message("message");
    log.log_command("command");
    log.log_assert("expression", "function", "file", 1);
    log.log_exception(tarqa::Exception(1, std::string("maker's"), "file", 1));
    log.log_exception(std::runtime_error("standard"));
    log.log_fatal_error("text");
    log.log_fatal_error(tarqa::Exception(1, std::string("maker's"), "file", 1));
    log.log_fatal_error(std::runtime_error("standard"));
}

TEST_F(ErrorProtocolFile, IsMadeByTheFirstUse)
{
    EXPECT_TRUE(log_files::names().empty());
    ErrorProtocol::instance();
    EXPECT_EQ(log_files::names(), std::vector<std::string>{"Tarq_1.log"});
}

TEST_F(ErrorProtocolFile, NameIsKnown)
{
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(1));
    EXPECT_EQ(&ErrorProtocol::const_instance(), &ErrorProtocol::instance());
}

TEST_F(ErrorProtocolFile, BearsTheProductsName)
{
    pkBase::pkProductInfo::instance().product_name("TarqTerrain");
    ErrorProtocol::instance();
    EXPECT_EQ(log_files::names(), std::vector<std::string>{"TarqTerrain_1.log"});
}

TEST_F(ErrorProtocolFile, BeginsWithTheHead)
{
    ErrorProtocol::instance();
    const std::string text = log_files::read(log_files::path(1));
    EXPECT_EQ(text, log_files::head());
    EXPECT_EQ(
        text.find("************ ERROR LOG OPENED ************ \n\nSYSTEM INFROMATION\nProduct: Tarq\n"), 0u);
    EXPECT_NE(text.find("Operating system: "), std::string::npos);
    EXPECT_NE(text.find("User preferences: " + PrivateHome::log_directory() + "/\n"), std::string::npos);
}

TEST_F(ErrorProtocolFile, DirectoryIsMadeForThisUserOnly)
{
    ASSERT_FALSE(fs::exists(PrivateHome::log_directory()));
    ErrorProtocol::instance();
    EXPECT_EQ(fs::status(PrivateHome::log_directory()).permissions(), fs::perms::owner_all);
}

TEST_F(ErrorProtocolFile, DirectoryIsMadeWithThoseAboveIt)
{
    const std::string first = PrivateHome::scratch_directory() + "/one";
    const std::string root = first + "/two";
    setenv("XDG_CONFIG_HOME", root.c_str(), 1);
    ::umask(0);
    ErrorProtocol::instance();
    EXPECT_TRUE(fs::exists(root + "/tarqa/Tarq_1.log"));
    for (const std::string& directory : {first, root, root + "/tarqa"}) {
        EXPECT_EQ(fs::status(directory).permissions(), fs::perms::owner_all) << directory;
    }
}

TEST_F(ErrorProtocolFile, IsClosedBetweenEntries)
{
    LogCapture capture;
    ErrorProtocol::instance().log_message("first");
    for (const auto& descriptor : fs::directory_iterator("/proc/self/fd")) {
        std::error_code ignored;
        EXPECT_NE(fs::read_symlink(descriptor.path(), ignored).string(), log_files::path(1));
    }
    EXPECT_TRUE(capture.take("first"));
}

TEST_F(ErrorProtocolFile, TakesTheFirstFreeNumber)
{
    log_files::make(1, 10);
    log_files::make(3, 30);
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(2));
    EXPECT_EQ(log_files::read(log_files::path(1)), " ");
    EXPECT_EQ(log_files::read(log_files::path(2)), log_files::head());
    EXPECT_EQ(log_files::read(log_files::path(3)), " ");
}

TEST_F(ErrorProtocolFile, TakesTheFirstNumberIfOnlyThatIsFree)
{
    for (int number = 2; number <= 20; ++number) {
        log_files::make(number, 10);
    }
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(1));
}

TEST_F(ErrorProtocolFile, TakesTheTwentiethNumber)
{
    for (int number = 1; number <= 19; ++number) {
        log_files::make(number, number);
    }
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(20));
    EXPECT_EQ(log_files::read(log_files::path(19)), " ");
}

TEST_F(ErrorProtocolFile, ReusesTheOldestOfTwenty)
{
    for (int number = 1; number <= 20; ++number) {
        log_files::make(number, number == 7 ? 1000 : 10 + number, std::string(5000, 'x'));
    }
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(7));
    EXPECT_EQ(log_files::read(log_files::path(7)), log_files::head());
    EXPECT_EQ(log_files::names().size(), 20u);
    for (int number = 1; number <= 20; ++number) {
        EXPECT_TRUE(number == 7 || log_files::read(log_files::path(number)) == std::string(5000, 'x'))
            << number;
    }
}

TEST_F(ErrorProtocolFile, ReusesTheFirstIfThatIsTheOldest)
{
    for (int number = 1; number <= 20; ++number) {
        log_files::make(number, 100 - number);
    }
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(1));
    EXPECT_EQ(log_files::read(log_files::path(1)), log_files::head());
}

TEST_F(ErrorProtocolFile, ReusesTheTwentiethIfThatIsTheOldest)
{
    for (int number = 1; number <= 20; ++number) {
        log_files::make(number, 10 + number);
    }
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(20));
    EXPECT_FALSE(log_files::exists(21));
}

TEST_F(ErrorProtocolFile, ReusesTheLowestNumberAmongTheOldest)
{
    for (int number = 1; number <= 20; ++number) {
        log_files::make(number, 10);
    }
    const fs::file_time_type oldest = fs::last_write_time(log_files::path(1)) - std::chrono::hours(1);
    fs::last_write_time(log_files::path(5), oldest);
    fs::last_write_time(log_files::path(12), oldest);
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(5));
}

TEST_F(ErrorProtocolFile, ReusesTheFirstIfAllAreFromTheFuture)
{
    for (int number = 1; number <= 20; ++number) {
        log_files::make(number, -60 - number);
    }
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(1));
    EXPECT_EQ(log_files::read(log_files::path(1)), log_files::head());
}

TEST_F(ErrorProtocolFile, IgnoresTheLogsOfOtherProducts)
{
    log_files::make(1, 10);
    pkBase::pkProductInfo::instance().product_name("Other");
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), PrivateHome::log_directory() + "/Other_1.log");
    EXPECT_EQ(log_files::read(log_files::path(1)), " ");
}

TEST_F(ErrorProtocolFile, EntriesAreDroppedWhenAFileIsInTheDirectorysPlace)
{
    std::ofstream(PrivateHome::log_directory()) << "in the way";
    EXPECT_NO_THROW(log_everything());
    EXPECT_EQ(log_files::read(PrivateHome::log_directory()), "in the way");
    fs::remove(PrivateHome::log_directory());
}

TEST_F(ErrorProtocolFile, EntriesAreDroppedWhenTheDirectoryCannotBeMade)
{
    setenv("XDG_CONFIG_HOME", "/proc", 1);
    EXPECT_NO_THROW(log_everything());
    EXPECT_TRUE(log_files::names().empty());
}

TEST_F(ErrorProtocolFile, EntriesAreDroppedWhenTheDirectoryIsReadOnly)
{
    const fs::path directory = PrivateHome::log_directory();
    fs::create_directories(directory);
    const fs::perms readable = fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec;
    fs::permissions(directory.parent_path().parent_path(), readable);
    fs::permissions(directory.parent_path(), readable);
    fs::permissions(directory,
        fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
    const int previous = setfsuid(s_nobody); // the superuser may write all the same; does nothing for others

    EXPECT_NO_THROW(log_everything());
    EXPECT_TRUE(log_files::names().empty());

    setfsuid(static_cast<uid_t>(previous));
    fs::permissions(directory, fs::perms::owner_all);
}

TEST_F(ErrorProtocolFile, EntriesAreDroppedWhileTheFileCannotBeOpened)
{
    LogCapture capture;
    ErrorProtocol::instance().log_message("before");
    const std::string away = PrivateHome::scratch_directory() + "/away";
    fs::rename(log_files::path(1), away);
    fs::create_directory(log_files::path(1)); // cannot be opened for writing by anybody

    EXPECT_NO_THROW(log_everything());
    EXPECT_TRUE(fs::is_empty(log_files::path(1)));

    fs::remove(log_files::path(1));
    fs::rename(away, log_files::path(1));
    ErrorProtocol::instance().log_message("after");
    EXPECT_EQ(capture.text(), "before\nafter\n");
    capture.take_all();
}

} // namespace
