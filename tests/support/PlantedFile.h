#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace support {

/// What somebody may have put in a place where the program is about to write.
enum class Planted
{
    Link, ///< to the victim
    DanglingLink,
    HardLink, ///< of the victim
    Pipe, ///< that nobody reads or writes
    Directory,
    ForeignFile ///< another user's
};

inline std::ostream& operator<<(std::ostream& stream, Planted planted)
{
    const char* const names[] = {"Link", "DanglingLink", "HardLink", "Pipe", "Directory", "ForeignFile"};
    return stream << names[static_cast<int>(planted)];
}

inline std::string name_of(const testing::TestParamInfo<Planted>& planted)
{
    return testing::PrintToString(planted.param);
}

inline auto everything_planted()
{
    return testing::Values(Planted::Link, Planted::DanglingLink, Planted::HardLink, Planted::Pipe,
        Planted::Directory, Planted::ForeignFile);
}

/**
 * A file of the user's that nobody is to write to, and things in other places that could lead there.
 * Everything is as old as can be, to be what is chosen where the oldest is.
 */
class PlantedFile
{
public:
    explicit PlantedFile(const std::string& directory)
        : m_victim(directory + "/victim")
        , m_missing(directory + "/missing")
    {
        std::filesystem::create_directories(directory);
        std::ofstream(m_victim) << "the user's own";
        ::chmod(m_victim.c_str(), 0640);
    }

    void plant(Planted planted, const std::string& path) const
    {
        namespace fs = std::filesystem;
        switch (planted) {
        case Planted::Link:
            fs::create_symlink(m_victim, path);
            break;
        case Planted::DanglingLink:
            fs::create_symlink(m_missing, path);
            break;
        case Planted::HardLink:
            fs::create_hard_link(m_victim, path);
            break;
        case Planted::Pipe:
            ASSERT_EQ(0, ::mkfifo(path.c_str(), 0600));
            break;
        case Planted::Directory:
            fs::create_directory(path);
            break;
        case Planted::ForeignFile:
            std::ofstream(path) << "somebody else's";
            ::chmod(path.c_str(), 0666);
            if (::chown(path.c_str(), s_nobody, s_nobody) != 0) { // only the superuser can give files away
                fs::remove(path);
                fs::create_hard_link(m_victim, path);
            }
            break;
        }
        const struct timespec old[2] = {{1000, 0}, {1000, 0}};
        ::utimensat(AT_FDCWD, path.c_str(), old, AT_SYMLINK_NOFOLLOW);
    }

    /// Fails the test unless everything is as it was.
    void expect_untouched(const std::string& path) const
    {
        EXPECT_EQ("the user's own", content(m_victim));
        EXPECT_EQ(std::filesystem::perms(0640), std::filesystem::status(m_victim).permissions());
        EXPECT_FALSE(std::filesystem::exists(m_missing));
        const std::filesystem::file_status planted = std::filesystem::symlink_status(path);
        EXPECT_TRUE(std::filesystem::exists(planted));
        if (std::filesystem::is_regular_file(planted)) {
            const std::string text = content(path);
            EXPECT_TRUE(text == "the user's own" || text == "somebody else's") << text;
        } else if (std::filesystem::is_directory(planted)) {
            EXPECT_TRUE(std::filesystem::is_empty(path));
        }
    }

    static constexpr unsigned int s_nobody = 65534;

private:
    static std::string content(const std::string& path)
    {
        std::ifstream stream(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }

    std::string m_victim;
    std::string m_missing;
};

} // namespace support
