#include <tarqa/utilities/TemporaryDirectory.h>

#include "support/ChildProcess.h"
#include "support/PrivateHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using support::ChildProcess;

namespace fs = std::filesystem;
using tarqa::utilities::clear_existing_temp_directories;
using tarqa::utilities::temporary_directories_exist;
using tarqa::utilities::TemporaryDirectory;
using tarqa::utilities::TemporaryDirectoryException;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

const uid_t s_another_user = 65534;
const char* const s_dead = "-999999-abcDEF"; // the end of the name of a directory that a killed process left

fs::path tmp()
{
    return std::getenv("TMPDIR");
}

void write_file(const fs::path& file, const std::string& text = "data")
{
    std::ofstream(file) << text;
}

/// Plants a directory that nobody lives in, with a file in it.
fs::path plant(const std::string& name)
{
    const fs::path directory = tmp() / name;
    fs::create_directory(directory);
    write_file(directory / "left.dat");
    return directory;
}

bool is_there(const fs::path& path)
{
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

std::size_t entries_of(const fs::path& directory)
{
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

/// Makes a directory of the kind that the calling process never deletes, and gives its path.
std::string move_in(const std::string& kind)
{
    static std::vector<std::unique_ptr<TemporaryDirectory>>* const p_kept
        = new std::vector<std::unique_ptr<TemporaryDirectory>>; // leaked: the process is to be killed
    p_kept->push_back(std::make_unique<TemporaryDirectory>(kind));
    write_file(p_kept->back()->path() + "/work.dat");
    return p_kept->back()->path();
}

/// Code and message of the exception that making a directory throws; "" if it throws none.
std::string failure()
{
    try {
        TemporaryDirectory directory("vista");
    } catch (const TemporaryDirectoryException& e) {
        return std::to_string(e.code()) + " " + e.message();
    }
    return {};
}

/// Runs @p work as another user where this user may do that, else as this user.
std::string as_another_user(const std::function<std::string()>& work)
{
    // Lets the other user reach the private directories of this test.
    const fs::path root = fs::path(support::PrivateHome::scratch_directory()).parent_path();
    fs::permissions(root, fs::perms::group_exec | fs::perms::others_exec, fs::perm_options::add);
    fs::permissions(tmp(), fs::perms::all);
    ChildProcess child([&work]() -> std::string {
        return geteuid() == 0 && setuid(s_another_user) != 0 ? "not changed" : work();
    });
    return child.report();
}

void give_to_another_user(const fs::path& path)
{
    if (geteuid() == 0) {
        ASSERT_EQ(lchown(path.c_str(), s_another_user, s_another_user), 0);
    }
}

} // namespace

TEST(TemporaryDirectory, IsAFreshPrivateDirectoryInTheTemporaryDirectory)
{
    const TemporaryDirectory directory("vista");
    const fs::path path = directory.path();
    EXPECT_TRUE(path.is_absolute());
    EXPECT_EQ(path.parent_path(), tmp());
    EXPECT_THAT(
        path.filename().string(), MatchesRegex("vista-" + std::to_string(getpid()) + "-[A-Za-z0-9]{6}"));
    EXPECT_EQ(entries_of(path), 0u);
    struct stat facts;
    ASSERT_EQ(lstat(path.c_str(), &facts), 0);
    EXPECT_TRUE(S_ISDIR(facts.st_mode));
    EXPECT_EQ(facts.st_mode & 07777, 0700u);
    EXPECT_EQ(facts.st_uid, geteuid());
    EXPECT_EQ(entries_of(tmp()), 1u);
}

TEST(TemporaryDirectory, IsDeletedWithItsContentsByTheDestructor)
{
    {
        const TemporaryDirectory directory("vista");
        fs::create_directories(directory.path() + "/a/b/c");
        write_file(directory.path() + "/a/b/c/Gel\xc3\xa4nde \xff.dat");
        write_file(directory.path() + "/.hidden");
        ASSERT_EQ(mkfifo((directory.path() + "/pipe").c_str(), 0600), 0);
    }
    EXPECT_EQ(entries_of(tmp()), 0u);
}

TEST(TemporaryDirectory, IsDeletedThoughDirectoriesInItAreWriteProtected)
{
    const std::string left = as_another_user([] {
        {
            const TemporaryDirectory directory("vista");
            fs::create_directories(directory.path() + "/protected/closed");
            write_file(directory.path() + "/protected/closed/a.dat");
            write_file(directory.path() + "/protected/b.dat");
            fs::permissions(directory.path() + "/protected/closed", fs::perms::none);
            fs::permissions(directory.path() + "/protected", fs::perms::owner_read);
        }
        return std::to_string(entries_of(tmp()));
    });
    EXPECT_EQ(left, "0");
}

TEST(TemporaryDirectory, DeletesLinksButNotWhatTheyPointTo)
{
    const fs::path precious = fs::path(support::PrivateHome::scratch_directory()) / "precious";
    fs::create_directory(precious);
    write_file(precious / "a.dat");
    {
        const TemporaryDirectory directory("vista");
        fs::create_directory_symlink(precious, directory.path() + "/directory");
        fs::create_symlink(precious / "a.dat", directory.path() + "/file");
        fs::create_symlink("/nowhere", directory.path() + "/dangling");
        fs::create_symlink("..", directory.path() + "/up");
    }
    EXPECT_EQ(entries_of(tmp()), 0u);
    EXPECT_TRUE(is_there(precious / "a.dat"));
}

TEST(TemporaryDirectory, ThatIsGoneAlreadyIsNoProblem)
{
    const TemporaryDirectory directory("vista");
    fs::remove_all(directory.path());
    EXPECT_EQ(entries_of(tmp()), 0u);
}

TEST(TemporaryDirectory, LeavesWhatWasPutInItsPlace)
{
    std::string path;
    {
        const TemporaryDirectory directory("vista");
        path = directory.path();
        fs::remove_all(path);
        fs::create_directory(path + ".new");
        fs::rename(path + ".new", path);
        write_file(path + "/other.dat");
    }
    EXPECT_TRUE(is_there(path + "/other.dat"));
}

TEST(TemporaryDirectory, ManyThreadsGetOneEach)
{
    const std::size_t threads = 8;
    const std::size_t each = 25;
    std::vector<std::vector<std::unique_ptr<TemporaryDirectory>>> made(threads);
    std::vector<std::thread> running;
    for (auto& directories : made) {
        running.emplace_back([&directories] {
            for (std::size_t i = 0; i < each; ++i) {
                directories.push_back(std::make_unique<TemporaryDirectory>("vista"));
                clear_existing_temp_directories("vista");
            }
        });
    }
    for (std::thread& thread : running) {
        thread.join();
    }
    std::set<std::string> paths;
    for (const auto& directories : made) {
        for (const auto& directory : directories) {
            EXPECT_TRUE(fs::is_directory(directory->path()));
            paths.insert(directory->path());
        }
    }
    EXPECT_EQ(paths.size(), threads * each);
    made.clear();
    EXPECT_EQ(entries_of(tmp()), 0u);
}

TEST(TemporaryDirectory, KindKeepsOnlyHarmlessCharacters)
{
    const auto start_of = [](const std::string& kind) {
        const TemporaryDirectory directory(kind);
        EXPECT_EQ(fs::path(directory.path()).parent_path(), tmp());
        const std::string name = fs::path(directory.path()).filename().string();
        return name.substr(0, name.find('-'));
    };
    EXPECT_EQ(start_of("vista.2_A"), "vista.2_A");
    EXPECT_EQ(start_of("../../etc/x"), ".._.._etc_x");
    EXPECT_EQ(start_of("vista-x y"), "vista_x_y");
    EXPECT_EQ(start_of(std::string("a\0b\n", 4)), "a_b_");
    EXPECT_EQ(start_of("\xc3\xa4"), "__");
    EXPECT_EQ(start_of(""), "_");
    EXPECT_EQ(start_of("XXXXXX%s"), "XXXXXX_s");
    EXPECT_EQ(start_of("."), ".");
}

TEST(TemporaryDirectory, WorksBelowAPathOfAnyBytes)
{
    const fs::path odd = tmp() / "Gel\xc3\xa4nde \xff #?%41";
    fs::create_directory(odd);
    setenv("TMPDIR", odd.c_str(), 1);
    {
        const TemporaryDirectory directory("vista");
        EXPECT_EQ(fs::path(directory.path()).parent_path(), odd);
        EXPECT_TRUE(fs::is_directory(directory.path()));
    }
    plant("vista" + std::string(s_dead));
    EXPECT_TRUE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    EXPECT_EQ(entries_of(odd), 0u);
}

TEST(TemporaryDirectory, ThatCannotBeMadeThrowsTheReason)
{
    const std::string file = support::PrivateHome::scratch_directory() + "/file";
    write_file(file);
    setenv("TMPDIR", file.c_str(), 1);
    EXPECT_EQ(failure(), "2001 No temporary directory can be made in " + file + "/: Not a directory");
    setenv("TMPDIR", "/nowhere/at %1 all", 1);
    EXPECT_EQ(failure(),
        "2001 No temporary directory can be made in /nowhere/at %1 all/: No such file or directory");
    const std::string huge = "/" + std::string(5000, 'x');
    setenv("TMPDIR", huge.c_str(), 1);
    EXPECT_THAT(failure(), HasSubstr("File name too long"));
}

TEST(TemporaryDirectory, OfAHugeKindThrows)
{
    EXPECT_THROW(TemporaryDirectory(std::string(1024 * 1024, 'x')), TemporaryDirectoryException);
    EXPECT_FALSE(temporary_directories_exist(std::string(1024 * 1024, 'x')));
    EXPECT_EQ(entries_of(tmp()), 0u);
}

TEST(TemporaryDirectory, ThatFailsLeavesNothingBehind)
{
    const rlimit none = {3, 3};
    ChildProcess child([&none]() -> std::string {
        setrlimit(RLIMIT_NOFILE, &none); // the directory can be made, but not opened
        return failure();
    });
    EXPECT_THAT(child.report(), HasSubstr("Too many open files"));
    EXPECT_EQ(entries_of(tmp()), 0u);
}

TEST(TemporaryDirectory, IsNotInheritedByStartedPrograms)
{
    const TemporaryDirectory directory("vista");
    int found = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone; // the descriptor of the listing itself
        if (fs::read_symlink(entry.path(), gone) == directory.path()) {
            const int flags = fcntl(std::stoi(entry.path().filename().string()), F_GETFD);
            EXPECT_NE(flags & FD_CLOEXEC, 0);
            ++found;
        }
    }
    EXPECT_EQ(found, 1);
}

TEST(TemporaryDirectory, IsNotDeletedByAForkedCopy)
{
    auto directory = std::make_unique<TemporaryDirectory>("vista");
    write_file(directory->path() + "/a.dat");
    ChildProcess child([&directory]() -> std::string {
        const std::string path = directory->path();
        directory.reset();
        return is_there(path + "/a.dat") ? "there" : "gone";
    });
    EXPECT_EQ(child.report(), "there");
    child.let_go();
    clear_existing_temp_directories("vista");
    EXPECT_TRUE(is_there(directory->path() + "/a.dat")); // the copy took no lock away either
    directory.reset();
    EXPECT_EQ(entries_of(tmp()), 0u);
}

TEST(TemporaryDirectoryCleanUp, OfNothingDoesNothing)
{
    EXPECT_FALSE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    EXPECT_FALSE(temporary_directories_exist(""));
    clear_existing_temp_directories("");
    setenv("TMPDIR", "/nowhere", 1);
    EXPECT_FALSE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    setenv("TMPDIR", "/dev/null", 1);
    EXPECT_FALSE(temporary_directories_exist("vista"));
    EXPECT_NO_THROW(clear_existing_temp_directories("vista"));
}

TEST(TemporaryDirectoryCleanUp, RemovesWhatAKilledProcessLeft)
{
    ChildProcess child([] { return move_in("vista"); });
    const std::string path = child.report();
    ASSERT_TRUE(is_there(path + "/work.dat"));
    child.kill();
    EXPECT_TRUE(is_there(path + "/work.dat"));
    EXPECT_TRUE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    EXPECT_FALSE(is_there(path));
    EXPECT_FALSE(temporary_directories_exist("vista"));
}

TEST(TemporaryDirectoryCleanUp, RemovesWhatAProcessLeftThatEndedWithoutCleaningUp)
{
    ChildProcess child([] { return move_in("vista"); });
    const std::string path = child.report();
    child.let_go();
    EXPECT_TRUE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    EXPECT_FALSE(is_there(path));
}

TEST(TemporaryDirectoryCleanUp, LeavesTheDirectoriesOfALivingProcess)
{
    ChildProcess child([] { return move_in("vista"); });
    const std::string path = child.report();
    EXPECT_FALSE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    EXPECT_TRUE(is_there(path + "/work.dat"));
}

TEST(TemporaryDirectoryCleanUp, LeavesTheDirectoriesOfThisProcess)
{
    const TemporaryDirectory directory("vista");
    write_file(directory.path() + "/a.dat");
    const fs::path stale = plant("vista" + std::string(s_dead));
    EXPECT_TRUE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    EXPECT_TRUE(is_there(directory.path() + "/a.dat"));
    EXPECT_FALSE(is_there(stale));
    EXPECT_FALSE(temporary_directories_exist("vista"));
}

TEST(TemporaryDirectoryCleanUp, GoesByTheLockAndNotByTheProcessNumber)
{
    // The number of a killed process may be another's by now, even this one's.
    const fs::path stale = plant("vista-" + std::to_string(getpid()) + "-abcdef");
    EXPECT_TRUE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    EXPECT_FALSE(is_there(stale));
}

TEST(TemporaryDirectoryCleanUp, AskingDeletesNothing)
{
    const fs::path stale = plant("vista" + std::string(s_dead));
    EXPECT_TRUE(temporary_directories_exist("vista"));
    EXPECT_TRUE(temporary_directories_exist("vista"));
    EXPECT_TRUE(is_there(stale / "left.dat"));
}

TEST(TemporaryDirectoryCleanUp, LeavesOtherKindsAlone)
{
    const std::vector<fs::path> others
        = {plant("vista2" + std::string(s_dead)), plant("vista-x" + std::string(s_dead)),
            plant("vista_x" + std::string(s_dead)), plant("xvista" + std::string(s_dead)),
            plant("VISTA" + std::string(s_dead)), plant("vist" + std::string(s_dead))};
    EXPECT_FALSE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    for (const fs::path& other : others) {
        EXPECT_TRUE(is_there(other / "left.dat")) << other;
    }
    EXPECT_TRUE(temporary_directories_exist("vista2"));
    EXPECT_TRUE(temporary_directories_exist("vista-x")); // which stands as "vista_x" in names
    clear_existing_temp_directories("vista-x");
    EXPECT_FALSE(is_there(tmp() / ("vista_x" + std::string(s_dead))));
    EXPECT_TRUE(is_there(tmp() / ("vista-x" + std::string(s_dead))));
}

TEST(TemporaryDirectoryCleanUp, LeavesNamesThatAreNotItsOwnAlone)
{
    const std::vector<const char*> names = {"vista", "vista-", "vista-1", "vista-1-", "vista--abcdef",
        "vista-1-abcde", "vista-1-abcdefg", "vista-1-abc.ef", "vista-1x-abcdef", "vista-1-abcdef-",
        "vista-1-abcdef~", "vista-1-2-abcdef", "vistax1-abcdef", "vista1-abcdef", " vista-1-abcdef",
        "vista-\xc2\xb9-abcdef", "vista-1-abcd\xc3\xa4"};
    for (const char* name : names) {
        plant(name);
    }
    EXPECT_FALSE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    for (const char* name : names) {
        EXPECT_TRUE(is_there(tmp() / name / "left.dat")) << name;
    }
}

TEST(TemporaryDirectoryCleanUp, LeavesFilesPipesAndLinksAlone)
{
    const fs::path precious = fs::path(support::PrivateHome::scratch_directory()) / "precious";
    fs::create_directory(precious);
    write_file(precious / "a.dat");
    const fs::path link = tmp() / "vista-1-aaaaaa";
    fs::create_directory_symlink(precious, link);
    const fs::path file = tmp() / "vista-1-bbbbbb";
    write_file(file);
    const fs::path dangling = tmp() / "vista-1-cccccc";
    fs::create_symlink("/nowhere", dangling);
    const fs::path pipe = tmp() / "vista-1-dddddd";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0); // opening it would wait for a writer
    const fs::path stale = plant("vista-1-eeeeee");
    const fs::path link_to_stale = tmp() / "vista-1-ffffff";
    fs::create_directory_symlink(precious, stale / "precious");
    fs::create_directory_symlink(tmp(), link_to_stale);

    EXPECT_TRUE(temporary_directories_exist("vista"));
    clear_existing_temp_directories("vista");
    EXPECT_TRUE(is_there(precious / "a.dat"));
    EXPECT_TRUE(is_there(link));
    EXPECT_TRUE(is_there(file));
    EXPECT_TRUE(is_there(dangling));
    EXPECT_TRUE(is_there(pipe));
    EXPECT_TRUE(is_there(link_to_stale));
    EXPECT_FALSE(is_there(stale));
    EXPECT_FALSE(temporary_directories_exist("vista"));
}

TEST(TemporaryDirectoryCleanUp, LeavesTheDirectoriesOfOtherUsersAlone)
{
    const fs::path own = plant("vista-1-aaaaaa");
    const fs::path others = plant("vista-1-bbbbbb");
    give_to_another_user(others);
    const bool is_others = geteuid() == 0; // only the superuser can give a directory away
    clear_existing_temp_directories("vista");
    EXPECT_FALSE(is_there(own));
    EXPECT_EQ(is_there(others / "left.dat"), is_others);
    EXPECT_FALSE(temporary_directories_exist("vista"));
}

TEST(TemporaryDirectoryCleanUp, LeavesWhatItCannotDeleteAndGoesOn)
{
    const bool can_give = geteuid() == 0; // where it cannot, nothing withstands the clean-up
    const fs::path stubborn = plant("vista-1-aaaaaa");
    fs::create_directory(stubborn / "foreign");
    write_file(stubborn / "foreign" / "a.dat");
    const fs::path next = plant("vista-1-bbbbbb");
    for (const fs::path& path : {stubborn, next, next / "left.dat"}) {
        give_to_another_user(path);
    }
    EXPECT_EQ(as_another_user([]() -> std::string {
        clear_existing_temp_directories("vista");
        return "done";
    }),
        "done");
    EXPECT_EQ(is_there(stubborn / "foreign" / "a.dat"), can_give);
    EXPECT_FALSE(is_there(next));
}

TEST(TemporaryDirectoryCleanUp, SweepsHalfMadeDirectoriesOlderThanADay)
{
    const fs::path young = plant(".new-vista-1-aaaaaa");
    const fs::path old = plant(".new-vista-1-bbbbbb");
    const fs::path other = plant(".new-vista2-1-bbbbbb");
    for (const fs::path& path : {old, other}) {
        fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(25));
    }
    fs::last_write_time(young, fs::file_time_type::clock::now() - std::chrono::hours(23));
    EXPECT_TRUE(temporary_directories_exist("vista")); // or nobody would sweep one that is alone
    clear_existing_temp_directories("vista");
    EXPECT_FALSE(temporary_directories_exist("vista"));
    EXPECT_TRUE(is_there(young));
    EXPECT_FALSE(is_there(old));
    EXPECT_TRUE(is_there(other));
}

TEST(TemporaryDirectoryCleanUp, OfAKindThatLooksHalfMadeTakesNoOthersHalfMadeOnes)
{
    const fs::path half_made = plant(".new-vista-1-aaaaaa");
    const fs::path own = plant(".new_vista-1-aaaaaa");
    clear_existing_temp_directories(".new");
    clear_existing_temp_directories(".new-vista");
    EXPECT_TRUE(is_there(half_made));
    EXPECT_FALSE(is_there(own));
}

TEST(TemporaryDirectoryCleanUp, ManyProcessesAtOnceRemoveOnlyWhatIsStale)
{
    std::vector<fs::path> stale;
    for (int i = 0; i < 50; ++i) {
        stale.push_back(plant("vista-" + std::to_string(i) + "-abcdef"));
    }
    const auto work = []() -> std::string {
        for (int i = 0; i < 50; ++i) {
            const TemporaryDirectory directory("vista");
            clear_existing_temp_directories("vista");
            if (!fs::is_directory(directory.path())) {
                return "a living directory was deleted";
            }
        }
        return "fine";
    };
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int i = 0; i < 6; ++i) {
        children.push_back(std::make_unique<ChildProcess>(work));
    }
    for (const auto& child : children) {
        EXPECT_EQ(child->report(), "fine");
    }
    EXPECT_EQ(entries_of(tmp()), 0u);
}
