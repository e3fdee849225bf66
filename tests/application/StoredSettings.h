#pragma once

#include <tarqa/housekeeping/ApplicationManager.h>

#include <functional>
#include <map>
#include <string>

/// The file of the user's settings in this process's private home, for the maker "Tarqa" and the product
/// "Tarq", as raw text.
namespace stored_settings {

/// Full path of the file.
std::string path();
bool exists();
/// Everything that is stored, "group/key" to the text as it stands in the file; empty without a file.
std::map<std::string, std::string> entries();
/// Writes the file anew, with this content.
void write(const std::string& content);
/// Writes the file anew, with this one entry.
void write(const std::string& group, const std::string& key, const std::string& text);

/// Who the next process runs as.
enum class User
{
    Same,
    Ordinary ///< one that permissions bind, also where the tests run as the superuser
};

/// Runs @p work in a process of its own that starts the application in this process's home, and gives what
/// @p work gave. A failed check and whatever the error log holds beyond the lines of every start is appended.
/// This process must not have started the application.
std::string in_new_application(
    const std::function<std::string(tarqa::housekeeping::ApplicationManager&)>& work, User user = User::Same);

/// As above; @p before runs first, in the new process, before the application is started.
std::string in_new_application(const std::function<void()>& before,
    const std::function<std::string(tarqa::housekeeping::ApplicationManager&)>& work, User user = User::Same);

} // namespace stored_settings
