#pragma once

#include "Host.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace kills {

/// The whole content of a file; empty if it cannot be read.
std::string content_of(const std::string& file);
void write_content(const std::string& file, const std::string& content);

/// A home that hosts share, with directories for their logs, settings and temporary files, and among the
/// latter some things that look much like a dead host's directory and are not.
class Home
{
public:
    /// Makes it. @param root a directory that does not exist yet
    explicit Home(const std::string& root);

    /// Makes it the home of this process.
    void enter() const;
    /// With the folders filled in.
    HostOptions options() const;
    /// Adds something that nobody may touch: a file that must keep its content.
    void guard(const std::string& file);

    std::string log_file(std::uint32_t number) const;
    /// The log files that exist, by number.
    std::map<std::uint32_t, std::string> logs() const;
    /// How many other files are in their directory.
    std::size_t files_beside_logs() const;
    /// Makes a log that was changed that many minutes ago.
    void make_old_log(std::uint32_t number, int minutes) const;
    /// The number that the next host must take.
    std::uint32_t next_log() const;

    /// The temporary directories of a process.
    std::vector<std::string> directories_of(pid_t process) const;
    /// Those that it had not made whole when it was killed.
    std::vector<std::string> half_made_directories_of(pid_t process) const;
    /// What else is in the settings' directory than the two files.
    std::vector<std::string> settings_left_over() const;
    /// The files that must not be touched and were.
    std::vector<std::string> touched() const;

private:
    std::vector<std::string> temporary_with(const std::string& start) const;

    std::string m_root;
    std::map<std::string, std::string> m_guarded; // file, content
};

} // namespace kills
