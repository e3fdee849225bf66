#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace terrain {

/// What tells whether a file is still the one that was read: its size and when it was written.
struct FileStamp
{
    bool exists = false;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;

    bool operator==(const FileStamp& other) const
    {
        return exists == other.exists && size == other.size && time == other.time;
    }
    bool operator!=(const FileStamp& other) const { return !(*this == other); }
};

/// That of a file as it is now. What is no file, as the name of a part of one, never exists. Any thread.
inline FileStamp file_stamp(const std::string& path)
{
    std::error_code error;
    FileStamp stamp;
    stamp.exists = std::filesystem::exists(path, error);
    if (stamp.exists) {
        stamp.time = std::filesystem::last_write_time(path, error);
        stamp.size
            = std::filesystem::is_regular_file(path, error) ? std::filesystem::file_size(path, error) : 0;
    }
    return stamp;
}

} // namespace terrain
