#include "support/PlantedFile.h"
#include "support/PrivateHome.h"

#include "QtLockedFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The lock behind the session's lock file. Two objects exclude each other in one process as in two.

namespace {

namespace fs = std::filesystem;
using tarqa::housekeeping::QtLockedFile;

class QtLockedFiles : public testing::Test
{
protected:
    QtLockedFiles()
        : path(support::PrivateHome::scratch_directory() + "/file")
    {
        file.setFileName(QString::fromStdString(path));
        other.setFileName(QString::fromStdString(path));
    }

    void open_both()
    {
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(other.open(QIODevice::ReadWrite));
    }

    /// A lock without waiting.
    static bool lock(QtLockedFile& locked, QtLockedFile::LockMode mode) { return locked.lock(mode, false); }

    const std::string path;
    QtLockedFile file;
    QtLockedFile other;
};

TEST_F(QtLockedFiles, HasNoLockAtFirst)
{
    const QtLockedFile named(QString::fromStdString(path));
    EXPECT_EQ(QString::fromStdString(path), named.fileName());
    EXPECT_FALSE(named.isLocked());
    EXPECT_EQ(QtLockedFile::NoLock, named.lockMode());
    EXPECT_FALSE(file.isLocked());
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(QtLockedFiles, OpeningMakesTheFileAndTakesNoLock)
{
    open_both();
    EXPECT_TRUE(fs::exists(path));
    EXPECT_FALSE(file.isLocked());
    EXPECT_TRUE(lock(other, QtLockedFile::WriteLock));
}

TEST_F(QtLockedFiles, IsReadAndWrittenAsAFile)
{
    open_both();
    EXPECT_EQ(4, file.write("text"));
    EXPECT_TRUE(file.flush());
    EXPECT_EQ("text", other.readAll());
}

TEST_F(QtLockedFiles, KeepsItsName)
{
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_EQ(QString::fromStdString(path), file.fileName());
    EXPECT_TRUE(file.exists());
    file.close();
    EXPECT_EQ(QString::fromStdString(path), file.fileName());
    file.setFileName("another");
    EXPECT_EQ("another", file.fileName());
}

TEST_F(QtLockedFiles, CannotBeOpenedTwice)
{
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_FALSE(file.open(QIODevice::ReadWrite));
    EXPECT_TRUE(file.isOpen());
}

TEST_F(QtLockedFiles, FailureSaysWhy)
{
    file.setFileName(QString::fromStdString(path + "/in no directory"));
    EXPECT_FALSE(file.open(QIODevice::ReadWrite));
    EXPECT_EQ(qt_error_string(ENOENT), file.errorString());
    EXPECT_FALSE(file.isOpen());
}

TEST_F(QtLockedFiles, ClosedOneCannotBeLocked)
{
    EXPECT_FALSE(lock(file, QtLockedFile::WriteLock));
    EXPECT_FALSE(lock(file, QtLockedFile::ReadLock));
    EXPECT_FALSE(file.isLocked());
    EXPECT_TRUE(file.unlock());
}

TEST_F(QtLockedFiles, WriteLockExcludesBothKinds)
{
    open_both();
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    EXPECT_EQ(QtLockedFile::WriteLock, file.lockMode());
    EXPECT_TRUE(file.isLocked());
    EXPECT_FALSE(lock(other, QtLockedFile::WriteLock));
    EXPECT_FALSE(lock(other, QtLockedFile::ReadLock));
    EXPECT_FALSE(other.isLocked());
    EXPECT_EQ(QtLockedFile::NoLock, other.lockMode());
}

TEST_F(QtLockedFiles, ReadLocksAreSharedAndExcludeWriters)
{
    open_both();
    EXPECT_TRUE(lock(file, QtLockedFile::ReadLock));
    EXPECT_EQ(QtLockedFile::ReadLock, file.lockMode());
    EXPECT_TRUE(lock(other, QtLockedFile::ReadLock));
    EXPECT_FALSE(lock(other, QtLockedFile::WriteLock));
    EXPECT_EQ(QtLockedFile::ReadLock, other.lockMode()); // it keeps what it had
    EXPECT_FALSE(lock(file, QtLockedFile::WriteLock));
}

TEST_F(QtLockedFiles, OneKindIsExchangedForTheOther)
{
    open_both();
    EXPECT_TRUE(lock(file, QtLockedFile::ReadLock));
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    EXPECT_EQ(QtLockedFile::WriteLock, file.lockMode());
    EXPECT_FALSE(lock(other, QtLockedFile::ReadLock));
    EXPECT_TRUE(lock(file, QtLockedFile::ReadLock));
    EXPECT_TRUE(lock(other, QtLockedFile::ReadLock));
}

TEST_F(QtLockedFiles, SameLockAgainChangesNothing)
{
    open_both();
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    EXPECT_TRUE(file.unlock()); // once is enough
    EXPECT_TRUE(lock(other, QtLockedFile::WriteLock));
}

TEST_F(QtLockedFiles, UnlockingFreesIt)
{
    open_both();
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    EXPECT_TRUE(file.unlock());
    EXPECT_FALSE(file.isLocked());
    EXPECT_TRUE(file.isOpen());
    EXPECT_TRUE(file.unlock());
    EXPECT_TRUE(lock(other, QtLockedFile::WriteLock));
}

TEST_F(QtLockedFiles, LockOfNoKindUnlocks)
{
    open_both();
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    EXPECT_TRUE(lock(file, QtLockedFile::NoLock));
    EXPECT_FALSE(file.isLocked());
    EXPECT_TRUE(lock(other, QtLockedFile::WriteLock));
}

TEST_F(QtLockedFiles, ClosingUnlocks)
{
    open_both();
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    file.close();
    EXPECT_FALSE(file.isLocked());
    EXPECT_FALSE(file.isOpen());
    EXPECT_TRUE(lock(other, QtLockedFile::WriteLock));
    EXPECT_TRUE(fs::exists(path));
}

TEST_F(QtLockedFiles, ClosedOneMayBeOpenedAndLockedAgain)
{
    open_both();
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    file.close();
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_FALSE(file.isLocked());
    EXPECT_TRUE(lock(file, QtLockedFile::WriteLock));
    EXPECT_FALSE(lock(other, QtLockedFile::ReadLock));
}

TEST_F(QtLockedFiles, EndUnlocks)
{
    ASSERT_TRUE(other.open(QIODevice::ReadWrite));
    {
        QtLockedFile shortly(QString::fromStdString(path));
        ASSERT_TRUE(shortly.open(QIODevice::ReadWrite));
        EXPECT_TRUE(lock(shortly, QtLockedFile::WriteLock));
        EXPECT_FALSE(lock(other, QtLockedFile::WriteLock));
    }
    EXPECT_TRUE(lock(other, QtLockedFile::WriteLock));
    EXPECT_TRUE(fs::exists(path));
}

TEST_F(QtLockedFiles, ReadOnlyOneTakesNoWriteLock)
{
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_TRUE(other.open(QIODevice::ReadWrite));
    EXPECT_FALSE(file.isWritable());
    EXPECT_FALSE(lock(file, QtLockedFile::WriteLock));
    EXPECT_FALSE(file.isLocked());
    EXPECT_TRUE(lock(file, QtLockedFile::ReadLock));
    EXPECT_FALSE(lock(other, QtLockedFile::WriteLock));
}

TEST_F(QtLockedFiles, LockThatBlocksWaitsForTheOtherToGo)
{
    open_both();
    EXPECT_TRUE(lock(other, QtLockedFile::WriteLock));
    bool taken = false;
    std::thread waiting([this, &taken] { taken = file.lock(QtLockedFile::WriteLock); });
    EXPECT_TRUE(other.unlock());
    waiting.join();
    EXPECT_TRUE(taken);
    EXPECT_FALSE(lock(other, QtLockedFile::ReadLock));
}

TEST_F(QtLockedFiles, ProgramThatIsStartedDoesNotInheritIt)
{
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_NE(0, fcntl(file.handle(), F_GETFD) & FD_CLOEXEC);
}

TEST_F(QtLockedFiles, LinksPipesAndDirectoriesAreRefused)
{
    const std::string target = path + " of somebody";
    std::ofstream(target) << "content";
    fs::create_symlink(target, path);
    EXPECT_FALSE(file.open(QIODevice::ReadWrite));
    fs::remove(path);

    ASSERT_EQ(0, ::mkfifo(path.c_str(), 0600));
    EXPECT_FALSE(file.open(QIODevice::ReadWrite));
    EXPECT_FALSE(file.open(QIODevice::ReadOnly)); // without waiting for a writer
    fs::remove(path);

    fs::create_directory(path);
    EXPECT_FALSE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.isOpen());
}

class QtLockedFilePlanted : public QtLockedFiles, public testing::WithParamInterface<support::Planted>
{ };

INSTANTIATE_TEST_SUITE_P(Everything, QtLockedFilePlanted, support::everything_planted(), support::name_of);

TEST_P(QtLockedFilePlanted, IsRefusedAndUntouched)
{
    const support::PlantedFile planted(support::PrivateHome::scratch_directory());
    planted.plant(GetParam(), path);
    EXPECT_FALSE(file.open(QIODevice::ReadWrite));
    EXPECT_FALSE(file.isOpen());
    planted.expect_untouched(path);
}

} // namespace
