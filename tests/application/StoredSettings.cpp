#include "StoredSettings.h"

#include "support/ChildProcess.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"
#include "support/StartedApplication.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <unistd.h>

namespace stored_settings {

namespace fs = std::filesystem;

namespace {

const unsigned int s_ordinary_user = 4711;

/// Where the preferences of all programs are.
fs::path config_directory()
{
    return std::getenv("XDG_CONFIG_HOME");
}

/// Gives the private home to the ordinary user, who must reach what is his in it.
void give_home_away()
{
    const fs::path root = fs::path(support::PrivateHome::scratch_directory()).parent_path();
    if (lchown(root.c_str(), s_ordinary_user, s_ordinary_user) != 0) {
        throw std::runtime_error("cannot give the home away");
    }
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (lchown(entry.path().c_str(), s_ordinary_user, s_ordinary_user) != 0) {
            throw std::runtime_error("cannot give away " + entry.path().string());
        }
    }
}

std::string run_application(const std::function<std::string(tarqa::housekeeping::ApplicationManager&)>& work)
{
    std::string report;
    {
        const support::StartedApplication started;
        report = work(started.manager());
    }
    for (const std::string& line : support::unannounced_log_lines()) {
        report += "\nunannounced: " + line;
    }
    if (testing::Test::HasFailure()) {
        report += "\na check failed";
    }
    return report;
}

} // namespace

std::string path()
{
    return (config_directory() / "Tarqa" / "Tarq.conf").string();
}

bool exists()
{
    return fs::exists(path());
}

std::map<std::string, std::string> entries()
{
    std::map<std::string, std::string> entries;
    std::ifstream stream(path(), std::ios::binary);
    std::string group;
    for (std::string line; std::getline(stream, line);) {
        const std::size_t equals = line.find('=');
        if (!line.empty() && line.front() == '[') {
            group = line.substr(1, line.size() - 2) + "/";
        } else if (equals != std::string::npos) {
            entries[group + line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    return entries;
}

void write(const std::string& content)
{
    fs::create_directories(fs::path(path()).parent_path());
    std::ofstream(path(), std::ios::binary | std::ios::trunc) << content;
}

void write(const std::string& group, const std::string& key, const std::string& text)
{
    write("[" + group + "]\n" + key + "=" + text + "\n");
}

std::string in_new_application(
    const std::function<std::string(tarqa::housekeeping::ApplicationManager&)>& work, User user)
{
    return in_new_application([] {}, work, user);
}

std::string in_new_application(const std::function<void()>& before,
    const std::function<std::string(tarqa::housekeeping::ApplicationManager&)>& work, User user)
{
    const bool changes_user = user == User::Ordinary && geteuid() == 0;
    if (changes_user) {
        give_home_away();
    }
    support::ChildProcess child([&]() -> std::string {
        if (changes_user && (setgid(s_ordinary_user) != 0 || setuid(s_ordinary_user) != 0)) {
            return "cannot change the user";
        }
        before();
        const std::string report = run_application(work);
        fs::remove_all(support::PrivateHome::log_directory()); // it has been looked at
        return report;
    });
    const std::string report = child.report();
    child.let_go();
    return report;
}

} // namespace stored_settings
