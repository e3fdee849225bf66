#include "Home.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

namespace kills {

namespace {

namespace fs = std::filesystem;

const std::uint32_t s_logs = 20;
const uid_t s_other_user = 65534;
const char* const s_log_start = "Tarq_";
const char* const s_log_end = ".log";

} // namespace

std::string content_of(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void write_content(const std::string& file, const std::string& content)
{
    std::ofstream(file, std::ios::binary) << content;
}

Home::Home(const std::string& root)
    : m_root(root)
{
    for (const char* const name :
        {"home", "config/tarqa", "config/Tarqa", "tmp", "runtime", "cache", "documents", "outside",
            "tmp/vista-note", "tmp/vistas-1-abcdef", "tmp/.new-vista-1-abcdef", "tmp/vista-1-abcdeh"}) {
        fs::create_directories(m_root + '/' + name);
    }
    fs::permissions(m_root + "/runtime", fs::perms::owner_all);
    for (int number = 0; number < s_documents; ++number) {
        write_content(m_root + "/documents/" + std::to_string(number) + ".tif", "heights");
    }
    fs::create_directory_symlink(m_root + "/outside", m_root + "/tmp/vista-1-abcdeg");
    const std::string others = m_root + "/tmp/vista-1-abcdeh";
    write_content(others + "/file", "content");
    if (::chown(others.c_str(), s_other_user, s_other_user) == 0) {
        guard(others + "/file");
    } else {
        fs::remove_all(others); // only the administrator can make what belongs to somebody else
    }
    for (const char* const name : {"outside/file", "tmp/vista-1-abcdef", "tmp/vista-note/file",
             "tmp/vistas-1-abcdef/file", "tmp/.new-vista-1-abcdef/file", "documents/0.tif"}) {
        write_content(m_root + '/' + name, "content");
        guard(m_root + '/' + name);
    }
    guard(m_root + "/tmp/vista-1-abcdeg/file");
}

void Home::enter() const
{
    const auto set = [this](const char* name, const char* folder) {
        ::setenv(name, (m_root + '/' + folder).c_str(), 1);
    };
    set("HOME", "home");
    set("XDG_CONFIG_HOME", "config");
    set("TMPDIR", "tmp");
    set("XDG_RUNTIME_DIR", "runtime");
    set("XDG_CACHE_HOME", "cache");
    ::setenv("XDG_SESSION_ID", "31", 1);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + m_root + "/no-bus").c_str(), 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + m_root + "/no-bus").c_str(), 1);
}

HostOptions Home::options() const
{
    HostOptions options;
    options.documents = m_root + "/documents";
    options.outside = m_root + "/outside";
    return options;
}

void Home::guard(const std::string& file)
{
    m_guarded[file] = content_of(file);
}

std::string Home::log_file(std::uint32_t number) const
{
    return m_root + "/config/tarqa/" + s_log_start + std::to_string(number) + s_log_end;
}

std::map<std::uint32_t, std::string> Home::logs() const
{
    std::map<std::uint32_t, std::string> logs;
    for (std::uint32_t number = 1; number <= s_logs; ++number) {
        if (fs::exists(log_file(number))) {
            logs[number] = content_of(log_file(number));
        }
    }
    return logs;
}

std::size_t Home::files_beside_logs() const
{
    const auto count = [](const std::string& folder) {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    };
    return count(m_root + "/config/tarqa") - logs().size();
}

void Home::make_old_log(std::uint32_t number, int minutes) const
{
    write_content(log_file(number), "an old log\n");
    fs::last_write_time(log_file(number), fs::file_time_type::clock::now() - std::chrono::minutes(minutes));
}

std::uint32_t Home::next_log() const
{
    std::uint32_t oldest = 1;
    for (std::uint32_t number = 1; number <= s_logs; ++number) {
        if (!fs::exists(log_file(number))) {
            return number;
        }
        if (fs::last_write_time(log_file(number)) < fs::last_write_time(log_file(oldest))) {
            oldest = number;
        }
    }
    return oldest;
}

std::vector<std::string> Home::temporary_with(const std::string& start) const
{
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(m_root + "/tmp")) {
        if (entry.path().filename().string().rfind(start, 0) == 0) {
            found.push_back(entry.path().string());
        }
    }
    return found;
}

std::vector<std::string> Home::directories_of(pid_t process) const
{
    return temporary_with("vista-" + std::to_string(process) + '-');
}

std::vector<std::string> Home::half_made_directories_of(pid_t process) const
{
    return temporary_with(".new-vista-" + std::to_string(process) + '-');
}

std::vector<std::string> Home::settings_left_over() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_root + "/config/Tarqa")) {
        const std::string name = entry.path().filename().string();
        if (name != "Tarq.conf" && name != "TarqAllVersions.conf") {
            names.push_back(name);
        }
    }
    return names;
}

std::vector<std::string> Home::touched() const
{
    std::vector<std::string> touched;
    for (const auto& [file, content] : m_guarded) {
        if (content_of(file) != content) {
            touched.push_back(file);
        }
    }
    return touched;
}

} // namespace kills
