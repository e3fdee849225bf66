#include "../application/LockFiles.h"
#include "../application/StoredSettings.h"
#include "QtLockedFile.h"
#include "faults/FaultRounds.h"
#include "support/PrivateHome.h"

#include <tarqa/utilities/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

// What becomes of locks, and of the temporary directories that they guard, when the system refuses its calls.

namespace {

namespace fs = std::filesystem;
using faults::Call;
using faults::Fault;
using faults::FaultRounds;
using faults::Manner;
using faults::open_descriptors;
using faults::SystemFaults;
using support::PrivateHome;
using tarqa::housekeeping::QtLockedFile;
using tarqa::utilities::clear_existing_temp_directories;
using tarqa::utilities::TemporaryDirectory;
using tarqa::utilities::TemporaryDirectoryException;

const unsigned int s_not_made = 2001;

std::string temporary_directory()
{
    return std::getenv("TMPDIR");
}

void empty_temporary_directory()
{
    for (const auto& entry : fs::directory_iterator(temporary_directory())) {
        fs::remove_all(entry.path());
    }
}

std::vector<std::string> content_of_temporary_directory()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(temporary_directory())) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

/// Whether nothing was left undone because of the fault but what the fault itself is about.
bool concerns(const FaultRounds& rounds, Call call)
{
    return rounds.point() && rounds.point()->call == call;
}

} // namespace

TEST(LockedFileUnderFaults, IsLockedForOthersOrSaysThatItIsNot)
{
    const QString name = QString::fromStdString(PrivateHome::scratch_directory() + "/lock");
    std::unique_ptr<QtLockedFile> file;
    std::size_t descriptors = 0;
    bool locked = false;
    FaultRounds rounds("LockedFile", "/scratch/lock");
    rounds.keeps_descriptors = false;
    rounds.prepare = [&] {
        file.reset();
        fs::remove(name.toStdString());
        descriptors = open_descriptors();
        file = std::make_unique<QtLockedFile>(name);
    };
    rounds.act
        = [&] { locked = file->open(QIODevice::ReadWrite) && file->lock(QtLockedFile::WriteLock, false); };
    rounds.check = [&](const Fault& fault) {
        EXPECT_EQ(file->isLocked(), locked);
        EXPECT_EQ(lock_files::is_free(name.toStdString()), !locked);
        EXPECT_TRUE(locked || (fault.error != 0 && fault.error != EINTR));
        // It can be had when the fault is over.
        EXPECT_TRUE(file->isOpen() || file->open(QIODevice::ReadWrite));
        EXPECT_TRUE(file->lock(QtLockedFile::WriteLock, false));
        EXPECT_FALSE(lock_files::is_free(name.toStdString()));
        file.reset();
        EXPECT_TRUE(lock_files::is_free(name.toStdString()));
        EXPECT_EQ(open_descriptors(), descriptors);
    };
    rounds.run();
}

TEST(LockedFileUnderFaults, IsFreeWhenItIsClosed)
{
    const QString name = QString::fromStdString(PrivateHome::scratch_directory() + "/lock");
    std::unique_ptr<QtLockedFile> file;
    FaultRounds rounds("LockedFileClosing", "/scratch/lock");
    rounds.keeps_descriptors = false;
    rounds.prepare = [&] {
        file = std::make_unique<QtLockedFile>(name);
        ASSERT_TRUE(file->open(QIODevice::ReadWrite));
        ASSERT_TRUE(file->lock(QtLockedFile::WriteLock));
    };
    rounds.act = [&] {
        file->unlock();
        file->close();
    };
    rounds.check = [&](const Fault&) {
        EXPECT_FALSE(file->isLocked());
        EXPECT_FALSE(file->isOpen());
        EXPECT_TRUE(lock_files::is_free(name.toStdString()));
    };
    rounds.run();
}

TEST(TemporaryDirectoryUnderFaults, IsMadeOrRefusedWithoutARest)
{
    std::unique_ptr<TemporaryDirectory> directory;
    std::size_t descriptors = 0;
    unsigned long long code = 0;
    FaultRounds rounds("TemporaryDirectoryMaking", temporary_directory());
    rounds.keeps_descriptors = false;
    rounds.prepare = [&] {
        empty_temporary_directory();
        code = 0;
        descriptors = open_descriptors();
    };
    rounds.act = [&] {
        try {
            directory = std::make_unique<TemporaryDirectory>("vista");
        } catch (const TemporaryDirectoryException& exception) {
            code = exception.code();
        }
    };
    rounds.check = [&](const Fault& fault) {
        EXPECT_EQ(code, directory ? 0 : s_not_made);
        EXPECT_TRUE(directory || fault.error != 0);
        if (directory) {
            std::ofstream(directory->path() + "/file") << "content";
            EXPECT_TRUE(fs::exists(directory->path() + "/file"));
            clear_existing_temp_directories("vista"); // of another program that starts
            EXPECT_TRUE(fs::exists(directory->path() + "/file") || concerns(rounds, Call::Lock));
        }
        directory.reset();
        // What was half made and could not be taken back either is for the next clean-up.
        const bool may_stay = fault.manner == Manner::FromThenOn;
        for (const std::string& name : content_of_temporary_directory()) {
            EXPECT_TRUE(may_stay && name.front() == '.') << name;
        }
        EXPECT_EQ(open_descriptors(), descriptors);
    };
    rounds.run();
}

TEST(TemporaryDirectoryUnderFaults, IsRemovedOrLeftToTheNextCleanUp)
{
    std::unique_ptr<TemporaryDirectory> directory;
    FaultRounds rounds("TemporaryDirectoryRemoval", temporary_directory());
    rounds.keeps_descriptors = false; // it closes one
    std::size_t descriptors = 0;
    rounds.prepare = [&] {
        empty_temporary_directory();
        descriptors = open_descriptors();
        directory = std::make_unique<TemporaryDirectory>("vista");
        fs::create_directory(directory->path() + "/folder");
        std::ofstream(directory->path() + "/folder/file") << "content";
        std::ofstream(directory->path() + "/file") << "content";
    };
    rounds.act = [&] { directory.reset(); };
    rounds.check = [&](const Fault&) {
        EXPECT_EQ(open_descriptors(), descriptors);
        clear_existing_temp_directories("vista");
        EXPECT_TRUE(content_of_temporary_directory().empty());
    };
    rounds.run();
}

TEST(TemporaryDirectoryUnderFaults, CleanUpTouchesNoneThatSomebodyLivesIn)
{
    empty_temporary_directory();
    const TemporaryDirectory lived_in("vista");
    std::ofstream(lived_in.path() + "/file") << "content";
    FaultRounds rounds("TemporaryDirectoryCleanUp", temporary_directory());
    rounds.is_repeatable = false; // the order of a directory's entries is the system's
    rounds.prepare = [] {
        lock_files::abandoned_directory("vista");
        lock_files::abandoned_directory("vista");
    };
    rounds.act = [] {
        if (tarqa::utilities::temporary_directories_exist("vista")) {
            clear_existing_temp_directories("vista");
        }
    };
    rounds.check = [&](const Fault&) {
        EXPECT_TRUE(fs::exists(lived_in.path() + "/file"));
        clear_existing_temp_directories("vista");
        EXPECT_EQ(content_of_temporary_directory().size(), 1u);
    };
    rounds.run();
}

TEST(SessionLockUnderFaults, OnlyWhoHoldsItCleansUpAndItIsFreeAfterwards)
{
    // Each round is a program of its own. What it tells: the calls, a line each, and the lock that it holds.
    const std::string part = "-lockfile";
    const auto start = [&part](std::size_t at, const Fault& fault) {
        SystemFaults* p_faults = nullptr;
        return stored_settings::in_new_application(
            [&] { p_faults = new SystemFaults(part, at, fault); }, // until the end
            [&](const auto&) {
                std::ostringstream report;
                for (const SystemFaults::Point& point : p_faults->points()) {
                    report << static_cast<int>(point.call) << ' ';
                }
                return report.str() + lock_files::held_by(::getpid());
            });
    };
    const std::size_t never = 1000000;
    lock_files::abandoned_directory("vista");
    std::istringstream calls(start(never, Fault()));
    std::vector<Call> points;
    for (int call = 0; calls >> call;) {
        points.push_back(static_cast<Call>(call));
    }
    calls.clear();
    std::string lock_file;
    calls >> lock_file;
    ASSERT_TRUE(fs::exists(lock_file)) << lock_file;
    ASSERT_FALSE(points.empty());

    std::size_t rounds = 0;
    std::size_t survived = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (const int error : {ENOSPC, EIO, EMFILE, EACCES, EINTR, ENOLCK}) {
            for (const Manner manner : {Manner::Once, Manner::FromThenOn}) {
                const Fault fault{manner, error};
                if (!faults::is_possible(points[i], fault)) {
                    continue;
                }
                SCOPED_TRACE("call " + std::to_string(i) + ", " + text(fault));
                const int failed_before = faults::failed_checks();
                const std::string abandoned = lock_files::abandoned_directory("vista");
                const std::string report = start(i, fault);
                const bool held = report.find(part) != std::string::npos;
                EXPECT_EQ(report.find("unannounced"), std::string::npos) << report;
                EXPECT_EQ(fs::exists(abandoned), !held);
                EXPECT_TRUE(held || error != EINTR);
                EXPECT_TRUE(lock_files::is_free(lock_file));
                clear_existing_temp_directories("vista");
                ++rounds;
                survived += faults::failed_checks() == failed_before ? 1 : 0;
            }
        }
    }
    faults::report_fault_count("SessionLock", points.size(), rounds, survived);
}
