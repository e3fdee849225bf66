#pragma once

#include <string>
#include <vector>

/// The log files in this process's private home, under the product name "Tarq".
namespace log_files {

/// Full path of the log with this number.
std::string path(int number);
bool exists(int number);
/// The whole content of a file; empty if it cannot be read.
std::string read(const std::string& file);
/// Makes a log, and its directory, last modified @p age_in_minutes ago. Holds one blank, or @p text.
void make(int number, int age_in_minutes, const std::string& text = " ");
/// The names of everything in the log directory, sorted; empty if there is no such directory.
std::vector<std::string> names();
/// Deletes everything in the log directory.
void remove_all();

/// What the log of this process must begin with.
std::string head();

} // namespace log_files
