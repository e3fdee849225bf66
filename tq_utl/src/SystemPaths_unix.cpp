#include "platform.h"

#include "PasswordEntry_unix.h"

#include <cstdlib>
#include <filesystem>

namespace tarqa::utilities::platform {

namespace {

/// The value of an environment variable that names a directory; empty unless it is an absolute path.
std::string absolute_path_from(const char* variable)
{
    const char* value = std::getenv(variable);
    return value && *value == '/' ? value : "";
}

std::string home_directory()
{
    std::string home = absolute_path_from("HOME");
    if (!home.empty()) {
        return home;
    }
    const std::string entered = own_password_entry().home;
    return entered.empty() ? "/" : entered;
}

} // namespace

std::string executable_file()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string user_configuration_directory()
{
    const std::string directory = absolute_path_from("XDG_CONFIG_HOME");
    return directory.empty() ? (std::filesystem::path(home_directory()) / ".config").string() : directory;
}

std::string temporary_directory()
{
    const std::string directory = absolute_path_from("TMPDIR");
    return directory.empty() ? "/tmp" : directory;
}

} // namespace tarqa::utilities::platform
