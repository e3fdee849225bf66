#include "SettingsFile.h"

#include <QtCore/QSettings>

#include <chrono>
#include <filesystem>
#include <fstream>

namespace fuzz {

namespace fs = std::filesystem;

namespace {

std::string file_of(const QSettings& settings)
{
    return settings.fileName().toStdString();
}

} // namespace

void put_settings_file(const QSettings& settings, const std::string& bytes)
{
    const std::string file = file_of(settings);
    fs::create_directories(fs::path(file).parent_path());
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    forget_settings(settings);
}

void forget_settings(const QSettings& settings)
{
    // Qt takes a file of the same size and time for the same file, and the clock may be too slow.
    static fs::file_time_type s_time = fs::file_time_type::clock::now() - std::chrono::hours(24 * 365);
    s_time += std::chrono::seconds(1);
    std::error_code no_file;
    fs::last_write_time(file_of(settings), s_time, no_file);
}

} // namespace fuzz
