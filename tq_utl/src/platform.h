#pragma once

#include <string>

/// What Hardware and SystemPaths ask the operating system; one source per class and system implements it.
/// Paths are absolute, with slashes. Any thread.
namespace tarqa::utilities::platform {

/// Model name of the first processor; empty if unknown.
std::string processor();
/// Logical processors that this process may use; at least 1.
unsigned int processor_count();
/// Physical memory in bytes; 0 if unknown.
unsigned long long physical_memory();

/// The file of the running program; empty if unknown.
std::string executable_file();
/// The folder in which each maker has a folder for the user's preferences.
std::string user_configuration_directory();
/// The folder for temporary files.
std::string temporary_directory();

} // namespace tarqa::utilities::platform
