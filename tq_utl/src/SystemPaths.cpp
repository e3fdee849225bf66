#include <tarqa/utilities/SystemPaths.h>

#include <tarqa/utilities/Url.h>

#include "platform.h"

#include <ostream>

namespace tarqa::utilities {

namespace {

const char* const s_maker_folder = "tarqa";
const char* const s_program_folder = "bin";

std::string without_end_slashes(const std::string& path)
{
    return path.substr(0, path.find_last_not_of('/') + 1);
}

/// The URL of a directory: one slash at its end, whatever @p path ends with.
std::string directory_url(const std::string& path)
{
    return filesystem_to_url(without_end_slashes(path) + '/');
}

/// @p path without its last name and the slash before it.
std::string parent_of(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

void write_path(std::ostream& stream, const char* name, const std::string& url)
{
    stream << name << ": " << url_to_filesystem(url) << '\n';
}

} // namespace

std::string SystemPaths::installation_root_path()
{
    const std::string folder = parent_of(platform::executable_file());
    const std::size_t name = folder.rfind('/') + 1; // 0 without a slash
    return directory_url(folder.substr(name) == s_program_folder ? parent_of(folder) : folder);
}

std::string SystemPaths::user_preferences_path()
{
    return directory_url(
        without_end_slashes(platform::user_configuration_directory()) + '/' + s_maker_folder);
}

std::string SystemPaths::temporary_path()
{
    return directory_url(platform::temporary_directory());
}

void SystemPaths::write_to_log(std::ostream& stream)
{
    write_path(stream, "Installation", installation_root_path());
    write_path(stream, "User preferences", user_preferences_path());
    write_path(stream, "Temporary files", temporary_path());
}

} // namespace tarqa::utilities
