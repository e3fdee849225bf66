#include "LogFiles.h"
#include "support/LogCapture.h"
#include "support/PlantedFile.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

// What somebody has put in the places of the logs is neither written to nor waited for, and who else may read
// what the program writes.

namespace {

namespace fs = std::filesystem;

using support::LogCapture;
using support::Planted;
using support::PlantedFile;
using support::PrivateHome;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::ErrorProtocolOutput;

unsigned int mode(const std::string& path)
{
    return static_cast<unsigned int>(fs::symlink_status(path).permissions());
}

void log_in_every_way()
{
    ErrorProtocol& log = ErrorProtocol::instance();
    log.log_message("message");
    ErrorProtocolOutput() << "streamed";
    log.log_fatal_error("text"); // which empties the log first
}

/// So that the log was seen a moment ago.
void log_several()
{
    for (int entry = 1; entry <= 4; ++entry) {
        ErrorProtocol::instance().log_message("entry " + std::to_string(entry));
    }
}

class PlantedLogs : public testing::TestWithParam<Planted>
{
protected:
    PlantedLogs() { fs::create_directories(PrivateHome::log_directory()); }
    ~PlantedLogs() override { log_files::remove_all(); }

    void plant(int number) { m_files.plant(GetParam(), log_files::path(number)); }
    /// The same after it was written to.
    void plant_anew(int number)
    {
        fs::remove(log_files::path(number));
        m_files = PlantedFile(PrivateHome::scratch_directory());
        plant(number);
    }
    void expect_untouched(int number) { m_files.expect_untouched(log_files::path(number)); }

private:
    PlantedFile m_files{PrivateHome::scratch_directory()};
};

INSTANTIATE_TEST_SUITE_P(Everything, PlantedLogs, support::everything_planted(), support::name_of);

TEST_P(PlantedLogs, ArePassedOver)
{
    LogCapture capture;
    plant(1);
    plant(2);
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(3));
    EXPECT_EQ(log_files::read(log_files::path(3)), log_files::head());
    expect_untouched(1);
    expect_untouched(2);
}

TEST_P(PlantedLogs, AreNotReusedThoughTheyAreTheOldest)
{
    for (int number = 1; number <= 20; ++number) {
        if (number == 1 || number == 5 || number == 20) {
            plant(number);
        } else {
            log_files::make(number, number == 9 ? 90 : 10);
        }
    }
    EXPECT_EQ(ErrorProtocol::instance().log_filename(), log_files::path(9));
    EXPECT_EQ(log_files::read(log_files::path(9)), log_files::head());
    for (const int number : {1, 5, 20}) {
        expect_untouched(number);
    }
}

TEST_P(PlantedLogs, InAllPlacesDropTheEntries)
{
    for (int number = 1; number <= 20; ++number) {
        plant(number);
    }
    log_in_every_way();
    EXPECT_EQ(log_files::names().size(), 20u);
    for (int number = 1; number <= 20; ++number) {
        expect_untouched(number);
    }
}

TEST_P(PlantedLogs, InThePlaceOfTheLogDropTheEntries)
{
    ErrorProtocol::instance();
    fs::remove(log_files::path(1));
    plant(1);
    log_in_every_way();
    expect_untouched(1);
}

TEST_P(PlantedLogs, AmongEntriesInADirectoryThatOthersMayWriteToDropThem)
{
    const std::string shared = PrivateHome::scratch_directory() + "/shared";
    fs::create_directory(shared);
    ::chmod(shared.c_str(), 0777);
    fs::remove(PrivateHome::log_directory());
    fs::create_directory_symlink(shared, PrivateHome::log_directory());
    log_several();
    fs::remove(log_files::path(1));
    plant(1);
    log_in_every_way();
    expect_untouched(1);
    log_files::remove_all();
    fs::remove(PrivateHome::log_directory());
}

TEST_P(PlantedLogs, AmongEntriesInADirectoryOfTheUsersOnlyDropThemAtLeastSoon)
{
    log_several();
    fs::remove(log_files::path(1));
    plant(1);
    if (GetParam() == Planted::HardLink || GetParam() == Planted::ForeignFile) {
        for (std::uintmax_t size = 0; fs::file_size(log_files::path(1)) != size;) {
            size = fs::file_size(log_files::path(1));
            ErrorProtocol::instance().log_message("entry");
        }
        plant_anew(1);
    }
    log_in_every_way();
    expect_untouched(1);
}

// The directory

class LogDirectory : public testing::Test
{
protected:
    ~LogDirectory() override
    {
        std::error_code ignored;
        fs::remove_all(PrivateHome::log_directory(), ignored);
    }

    /// Somebody else's directory: one that is given away, or one of the system's for who cannot do that.
    static std::string foreign_directory()
    {
        const std::string directory = PrivateHome::scratch_directory() + "/foreign";
        fs::create_directory(directory);
        ::chmod(directory.c_str(), 0777);
        return ::chown(directory.c_str(), PlantedFile::s_nobody, PlantedFile::s_nobody) == 0 ? directory
                                                                                             : "/usr";
    }
    static void expect_no_log()
    {
        log_in_every_way();
        EXPECT_EQ("", ErrorProtocol::instance().log_filename());
        EXPECT_TRUE(log_files::names().empty() || log_files::names().front() != "Tarq_1.log");
        EXPECT_FALSE(fs::exists(log_files::path(1)));
    }
};

TEST_F(LogDirectory, OfAnotherUserIsNotUsed)
{
    const std::string foreign = foreign_directory();
    std::error_code error;
    fs::rename(foreign, PrivateHome::log_directory(), error);
    if (error) {
        fs::create_directory_symlink(foreign, PrivateHome::log_directory());
    }
    expect_no_log();
}

TEST_F(LogDirectory, OfAnotherUserIsNotUsedBehindALinkEither)
{
    fs::create_directory_symlink(foreign_directory(), PrivateHome::log_directory());
    expect_no_log();
}

TEST_F(LogDirectory, BehindAnotherUsersLinkIsNotUsed)
{
    const std::string own = PrivateHome::scratch_directory() + "/own";
    fs::create_directory(own);
    fs::create_directory_symlink(own, PrivateHome::log_directory());
    if (::lchown(PrivateHome::log_directory().c_str(), PlantedFile::s_nobody, PlantedFile::s_nobody) != 0) {
        fs::remove(PrivateHome::log_directory()); // nobody but the superuser can give a link away
        fs::create_directory_symlink(foreign_directory(), PrivateHome::log_directory());
    }
    expect_no_log();
    EXPECT_TRUE(fs::is_empty(own));
}

TEST_F(LogDirectory, BehindTheUsersOwnLinkIsUsedAndStaysAsItIs)
{
    const std::string own = PrivateHome::scratch_directory() + "/own";
    fs::create_directory(own);
    ::chmod(own.c_str(), 0755);
    fs::create_directory_symlink(own, PrivateHome::log_directory());
    ErrorProtocol::instance();
    EXPECT_EQ(log_files::read(own + "/Tarq_1.log"), log_files::head());
    EXPECT_EQ(0600u, mode(own + "/Tarq_1.log"));
    EXPECT_EQ(0755u, mode(own));
}

TEST_F(LogDirectory, ThatExistsIsClosedToOthers)
{
    fs::create_directories(PrivateHome::log_directory());
    ::chmod(PrivateHome::log_directory().c_str(), 03777);
    ErrorProtocol::instance();
    EXPECT_EQ(0700u, mode(PrivateHome::log_directory()));
}

TEST_F(LogDirectory, IsGivenNoRightsThatItsOwnerTook)
{
    fs::create_directories(PrivateHome::log_directory());
    ::chmod(PrivateHome::log_directory().c_str(), 0555);
    ErrorProtocol::instance();
    EXPECT_EQ(0500u, mode(PrivateHome::log_directory()));
}

class LogRights : public LogDirectory, public testing::WithParamInterface<mode_t>
{ };

INSTANTIATE_TEST_SUITE_P(Masks, LogRights, testing::Values(0, 022, 037, 077, 0277, 0777));

TEST_P(LogRights, AreTheUsersOnlyWhateverTheMask)
{
    LogCapture capture;
    const std::string root = PrivateHome::scratch_directory() + "/preferences";
    setenv("XDG_CONFIG_HOME", root.c_str(), 1);
    ::umask(GetParam());
    ErrorProtocol::instance();
    EXPECT_EQ(0700u, mode(root));
    EXPECT_EQ(0700u, mode(PrivateHome::log_directory()));
    EXPECT_EQ(0600u, mode(log_files::path(1)));
    fs::remove(log_files::path(1)); // somebody tidied up
    ErrorProtocol::instance().log_message("entry");
    EXPECT_EQ(0600u, mode(log_files::path(1)));
    EXPECT_TRUE(capture.take("entry"));
    ::umask(022);
}

TEST_F(LogDirectory, ReusedLogIsClosedToOthers)
{
    for (int number = 1; number <= 20; ++number) {
        log_files::make(number, number);
        ::chmod(log_files::path(number).c_str(), 0666);
    }
    ErrorProtocol::instance();
    EXPECT_EQ(0600u, mode(log_files::path(20)));
    EXPECT_EQ(0666u, mode(log_files::path(19))); // an old one that is left alone
}

TEST_F(LogDirectory, LogThatTheUserOpensStaysOpen)
{
    LogCapture capture;
    ErrorProtocol::instance();
    ::chmod(log_files::path(1).c_str(), 0644);
    ErrorProtocol::instance().log_message("entry");
    ErrorProtocolOutput() << "streamed";
    EXPECT_EQ(0644u, mode(log_files::path(1)));
    EXPECT_TRUE(capture.take("entry"));
    EXPECT_TRUE(capture.take("streamed"));
}

TEST_F(LogDirectory, OfWhichTheLogIsDeletedAmongEntriesHasItBackAtOnce)
{
    LogCapture capture;
    log_several();
    fs::remove(log_files::path(1));
    ErrorProtocol::instance().log_message("after");
    EXPECT_EQ("after\n", log_files::read(log_files::path(1)));
    EXPECT_EQ(0600u, mode(log_files::path(1)));
    EXPECT_TRUE(capture.take("after"));
}

TEST_F(LogDirectory, ThatIsDeletedAmongEntriesIsBackAtOnce)
{
    LogCapture capture;
    log_several();
    fs::remove_all(PrivateHome::log_directory());
    ErrorProtocol::instance().log_message("after");
    EXPECT_EQ("after\n", log_files::read(log_files::path(1)));
    EXPECT_EQ(0700u, mode(PrivateHome::log_directory()));
    EXPECT_TRUE(capture.take("after"));
}

TEST_F(LogDirectory, ThatIsReplacedAmongEntriesLosesNone)
{
    LogCapture capture;
    log_several();
    const std::string away = PrivateHome::scratch_directory() + "/away";
    fs::rename(PrivateHome::log_directory(), away);
    std::string text = log_files::head() + "entry 1\nentry 2\nentry 3\nentry 4\n";
    for (int entry = 5; !log_files::exists(1); ++entry) {
        const std::string line = "entry " + std::to_string(entry);
        ErrorProtocol::instance().log_message(line);
        text += line + "\n";
    }
    EXPECT_EQ(text, log_files::read(away + "/Tarq_1.log") + log_files::read(log_files::path(1)));
    capture.take_all();
}

} // namespace
