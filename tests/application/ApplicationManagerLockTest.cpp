#include "LockFiles.h"
#include "LogFiles.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/utilities/TemporaryDirectory.h>

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::TestAccess;
using testing::ElementsAre;
using testing::IsEmpty;

std::string lock_name(const QString& id, const QString& path, const QString& session)
{
    return TestAccess::lock_file_name(id, path, session).toStdString();
}

/// The checksum as it stands in the name.
std::string checksum(const std::string& id)
{
    return QString::number(qChecksum(id.data(), static_cast<unsigned int>(id.size())), 16).toStdString();
}

std::string temporary(const std::string& name)
{
    return QDir(QDir::tempPath()).absolutePath().toStdString() + "/" + name;
}

/// The lock files in the directory of temporary files.
std::vector<std::string> lock_files_there()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(temporary(""))) {
        const std::string name = entry.path().filename().string();
        if (name.find("lockfile") != std::string::npos) {
            names.push_back(name);
        }
    }
    return names;
}

unsigned int mode_of(const std::string& file)
{
    struct stat status = {};
    EXPECT_EQ(::lstat(file.c_str(), &status), 0) << file;
    return status.st_mode & 07777u;
}

/// The names of the lock files after a start in the session that XDG_SESSION_ID names.
std::vector<std::string> lock_files_of_session(const std::string& id)
{
    setenv("XDG_SESSION_ID", id.c_str(), 1);
    const StartedApplication started;
    return lock_files_there();
}

/// The kernel's own count, as the name has it; empty if there is none.
std::string session_of_the_kernel()
{
    std::ifstream file("/proc/self/sessionid");
    unsigned long long number = 4294967295;
    file >> number;
    return number == 4294967295 ? std::string() : QString::number(number, 16).toStdString() + "-";
}

/// In the session 31, with an abandoned temporary directory that wants to be cleaned up.
class ApplicationManagerLock : public testing::Test
{
protected:
    ApplicationManagerLock()
        : file(temporary("Tarq-a5cf-1f-lockfile"))
        , stale(lock_files::abandoned_directory("vista"))
    {
        setenv("XDG_SESSION_ID", "31", 1);
    }

    /// Starts, and says whether the clean-up was made.
    bool start_cleans_up()
    {
        const StartedApplication started;
        return !fs::exists(stale);
    }

    const std::string file;
    const std::string stale;
};

} // namespace

// --- name

TEST(ApplicationManagerLockName, IsPrefixChecksumAndLockfile)
{
    EXPECT_EQ(lock_name("Tarq", "", ""), "Tarq-a5cf-lockfile");
    EXPECT_EQ(lock_name("Tarq", "/opt/Other/bin/program", ""), "Tarq-a5cf-lockfile");
}

TEST(ApplicationManagerLockName, HoldsTheSession)
{
    EXPECT_EQ(lock_name("Tarq", "", "1f"), "Tarq-a5cf-1f-lockfile");
    EXPECT_EQ(lock_name("Tarq", "", "0"), "Tarq-a5cf-0-lockfile");
}

TEST(ApplicationManagerLockName, PrefixHoldsTheFirstSixLettersOnly)
{
    EXPECT_EQ(lock_name("a1-B_2.c d/E\xc3\xa9"
                        "fGhi",
                  "", ""),
        "aBcdEf-"
            + checksum("a1-B_2.c d/E\xc3\xa9"
                       "fGhi")
            + "-lockfile");
    EXPECT_EQ(lock_name("123 %1", "", "5"), "-" + checksum("123 %1") + "-5-lockfile");
}

TEST(ApplicationManagerLockName, EmptyIdIsThePathOfTheProgramInLowerCase)
{
    EXPECT_EQ(lock_name("", "/Opt/My-Prog_2/Tarq-Terrain7.Exe", ""),
        "tarqte-" + checksum("/opt/my-prog_2/tarq-terrain7.exe") + "-lockfile");
    EXPECT_EQ(lock_name("", "Program", "a"), "progra-" + checksum("program") + "-a-lockfile");
}

TEST(ApplicationManagerLockName, ChecksumIsThatOfTheUtf8Bytes)
{
    EXPECT_EQ(lock_name(QString::fromUtf8("Gel\xc3\xa4nde"), "", ""),
        "Gelnde-" + checksum("Gel\xc3\xa4nde") + "-lockfile");
    EXPECT_EQ(lock_name("", QString::fromUtf8("/GEL\xc3\x84NDE/x"), ""),
        "x-" + checksum("/gel\xc3\xa4nde/x") + "-lockfile");
}

TEST(ApplicationManagerLockName, NothingAtAllGivesANameToo)
{
    EXPECT_EQ(lock_name("", "", ""), "-" + checksum("") + "-lockfile");
}

// --- session

TEST(ApplicationManagerSession, NumberIsWrittenInHexadecimal)
{
    EXPECT_THAT(lock_files_of_session("31"), ElementsAre("Tarq-a5cf-1f-lockfile"));
}

TEST(ApplicationManagerSession, BigNumberIsWrittenInHexadecimal)
{
    EXPECT_THAT(lock_files_of_session("3735928559"), ElementsAre("Tarq-a5cf-deadbeef-lockfile"));
}

TEST(ApplicationManagerSession, NameIsTakenAsItStands)
{
    EXPECT_THAT(lock_files_of_session("c2"), ElementsAre("Tarq-a5cf-c2-lockfile"));
}

TEST(ApplicationManagerSession, OnlyLettersAndDigitsOfANameCount)
{
    EXPECT_THAT(lock_files_of_session("../../etc/%1"), ElementsAre("Tarq-a5cf-etc1-lockfile"));
}

TEST(ApplicationManagerSession, OtherAlphabetsDoNotCount)
{
    EXPECT_THAT(lock_files_of_session("\xc3\xa4"
                                      "A\xff\xd9\xa3"),
        ElementsAre("Tarq-a5cf-A-lockfile"));
}

TEST(ApplicationManagerSession, WithoutOneTheKernelsAuditSessionCounts)
{
    unsetenv("XDG_SESSION_ID");
    const StartedApplication started;
    EXPECT_THAT(lock_files_there(), ElementsAre("Tarq-a5cf-" + session_of_the_kernel() + "lockfile"));
}

TEST(ApplicationManagerSession, NameWithoutLettersAndDigitsIsNone)
{
    EXPECT_THAT(
        lock_files_of_session("../.. %"), ElementsAre("Tarq-a5cf-" + session_of_the_kernel() + "lockfile"));
}

TEST(ApplicationManagerSession, HugeNameDoesNoHarm)
{
    const std::vector<std::string> names = lock_files_of_session(std::string(1024 * 1024, 'x'));
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names.front().rfind("Tarq-a5cf-x", 0), 0u);
    EXPECT_LE(names.front().size(), 255u);
}

TEST(ApplicationManagerSession, HugeNumberDoesNoHarm)
{
    EXPECT_EQ(lock_files_of_session(std::string(100000, '9')).size(), 1u);
}

// --- file

TEST_F(ApplicationManagerLock, IsHeldFromTheStartToTheEnd)
{
    {
        const StartedApplication started;
        EXPECT_FALSE(lock_files::is_free(file));
        EXPECT_EQ(lock_files::held_by(::getpid()), file);
    }
    EXPECT_TRUE(lock_files::is_free(file));
}

TEST_F(ApplicationManagerLock, FileIsForItsOwnerOnly)
{
    ::umask(0);
    const StartedApplication started;
    EXPECT_EQ(mode_of(file), 0600u);
}

TEST_F(ApplicationManagerLock, FileStaysAfterTheEnd)
{
    {
        const StartedApplication started;
    }
    EXPECT_TRUE(fs::is_regular_file(file));
    EXPECT_TRUE(fs::is_empty(file));
}

TEST_F(ApplicationManagerLock, FileThatExistsIsNotEmptied)
{
    std::ofstream(file) << "content";
    EXPECT_TRUE(start_cleans_up());
    EXPECT_EQ(log_files::read(file), "content");
}

TEST_F(ApplicationManagerLock, ProgramThatIsStartedDoesNotKeepIt)
{
    QProcess process;
    {
        const StartedApplication started;
        process.start("cat", QStringList());
        ASSERT_TRUE(process.waitForStarted(-1));
    }
    EXPECT_TRUE(lock_files::is_free(file));
    process.closeWriteChannel();
    process.waitForFinished(-1);
}

TEST_F(ApplicationManagerLock, UnrelatedCloseDoesNotLoseIt)
{
    const StartedApplication started;
    EXPECT_EQ(log_files::read(file), ""); // opens and closes the file in this process
    EXPECT_FALSE(lock_files::is_free(file));
}

// --- clean-up

TEST_F(ApplicationManagerLock, HolderDeletesWhatWasLeftBehind)
{
    const std::string second = lock_files::abandoned_directory("vista");
    EXPECT_TRUE(start_cleans_up());
    EXPECT_FALSE(fs::exists(second));
}

TEST_F(ApplicationManagerLock, HolderLeavesDirectoriesThatSomebodyLivesIn)
{
    const tarqa::utilities::TemporaryDirectory lived_in("vista");
    EXPECT_TRUE(start_cleans_up());
    EXPECT_TRUE(fs::exists(lived_in.path()));
}

TEST_F(ApplicationManagerLock, HolderLeavesOtherKinds)
{
    const std::string other = lock_files::abandoned_directory("import");
    const std::string similar = lock_files::abandoned_directory("vista2");
    fs::create_directory(temporary("vista"));
    std::ofstream(temporary("vista-file")) << "content";
    EXPECT_TRUE(start_cleans_up());
    EXPECT_TRUE(fs::exists(other + "/file"));
    EXPECT_TRUE(fs::exists(similar + "/file"));
    EXPECT_TRUE(fs::exists(temporary("vista")));
    EXPECT_TRUE(fs::exists(temporary("vista-file")));
}

TEST_F(ApplicationManagerLock, NothingIsDeletedWhileAnotherProcessHoldsIt)
{
    const lock_files::OtherLock other(file);
    ASSERT_TRUE(other.held());
    EXPECT_FALSE(start_cleans_up());
    EXPECT_TRUE(fs::exists(stale + "/file"));
}

TEST_F(ApplicationManagerLock, NothingIsDeletedWhileAnotherProcessReads)
{
    const lock_files::OtherLock other(file, lock_files::OtherLock::Read);
    ASSERT_TRUE(other.held());
    EXPECT_FALSE(start_cleans_up());
}

TEST_F(ApplicationManagerLock, IsNotWaitedForAndNotTakenLater)
{
    auto other = std::make_unique<lock_files::OtherLock>(file);
    const StartedApplication started;
    EXPECT_EQ(other->held(), true);
    other.reset();
    QCoreApplication::processEvents();
    EXPECT_TRUE(lock_files::is_free(file));
    EXPECT_TRUE(fs::exists(stale));
}

TEST_F(ApplicationManagerLock, LockOfAnotherSessionDoesNotMatter)
{
    const lock_files::OtherLock other(temporary("Tarq-a5cf-20-lockfile"));
    EXPECT_TRUE(start_cleans_up());
}

TEST_F(ApplicationManagerLock, SessionIsAskedForOnce)
{
    const StartedApplication started;
    TestAccess::destroy<ApplicationManager>();
    EXPECT_EQ(lock_files::held_by(::getpid()), "");
    setenv("XDG_SESSION_ID", "32", 1);
    LogCapture log;
    int count = 0;
    char** p_arguments = nullptr;
    ApplicationManager::instance().init(count, p_arguments, "test", true);
    support::take_start_up_lines(log);
    EXPECT_EQ(lock_files::held_by(::getpid()), file);
    EXPECT_THAT(lock_files_there(), ElementsAre("Tarq-a5cf-1f-lockfile"));
}

// --- what may stand in the file's place

TEST_F(ApplicationManagerLock, SymbolicLinkIsNotFollowed)
{
    const std::string target = support::PrivateHome::scratch_directory() + "/target";
    std::ofstream(target) << "content";
    ASSERT_EQ(::chmod(target.c_str(), 0644), 0);
    fs::create_symlink(target, file);
    {
        const StartedApplication started;
        EXPECT_TRUE(lock_files::is_free(target));
        EXPECT_TRUE(fs::exists(stale));
    }
    EXPECT_EQ(log_files::read(target), "content");
    EXPECT_EQ(mode_of(target), 0644u);
    EXPECT_TRUE(fs::is_symlink(file));
}

TEST_F(ApplicationManagerLock, SymbolicLinkToNowhereCreatesNothing)
{
    const std::string target = support::PrivateHome::scratch_directory() + "/target";
    fs::create_symlink(target, file);
    EXPECT_FALSE(start_cleans_up());
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(ApplicationManagerLock, DirectoryOnlySkipsTheCleanUp)
{
    fs::create_directory(file);
    EXPECT_FALSE(start_cleans_up());
    EXPECT_TRUE(fs::is_directory(file));
}

TEST_F(ApplicationManagerLock, PipeOnlySkipsTheCleanUp)
{
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(start_cleans_up());
    EXPECT_TRUE(fs::is_fifo(file));
}

TEST_F(ApplicationManagerLock, FileThatIsNotOursOnlySkipsTheCleanUp)
{
    std::ofstream(file) << "content";
    // The superuser may give it away and could open anything else; everybody else may not open this one.
    const bool ours_no_more
        = ::geteuid() == 0 ? ::chown(file.c_str(), 65534, 65534) == 0 : ::chmod(file.c_str(), 0400) == 0;
    ASSERT_TRUE(ours_no_more);
    EXPECT_FALSE(start_cleans_up());
    EXPECT_EQ(log_files::read(file), "content");
}
