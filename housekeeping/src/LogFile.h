#pragma once

#include <string>
#include <string_view>

namespace tarqa::housekeeping {

/**
 * The files behind the error log: choosing one, and writing to it in one piece. Nothing here throws for a
 * file that cannot be used, takes a lock, or logs.
 */
namespace log_file {

/// How many logs of a product exist at most.
inline constexpr int s_max_files = 20;

/**
 * Chooses the log of this run, claims it, and writes @p head into it: the first of `base_1.log` to
 * `base_20.log` that does not exist, else the least recently modified one, which is emptied. Two processes
 * never get the same new file. What is no file of this user's, or has a second name, is left alone, and its
 * number is taken. The directory is made if it is missing.
 * @param base path of the directory and start of the file names
 * @return the chosen file's path, also when it cannot be written; empty if the directory is somebody else's
 */
std::string choose(const std::string& base, const std::string& head);

/// Appends @p text, or replaces the whole content by it. A file that is new or empty is closed to other
/// users; one that is not this user's, or has a second name, is not touched. Where only the user may put
/// anything into the directory, entries that follow each other closely look for the owner and for a second
/// name again only after a hundredth of a second. One caller at a time: under the log's mutex. @return false
/// if it could not be written as a whole
bool write(const std::string& file, std::string_view text, bool empty_first);

// The platform's part:

/// Makes the directory, for this user only, and those above it. @return false if it does not exist afterwards
bool make_directory(const std::string& directory);
/// Closes the directory to other users, unless it is reached by a link of this user's own, who arranges it
/// himself then. @return false if it is another user's, or reached by another user's link
bool claim_directory(const std::string& directory);
/// Whether there is a regular file of this user's without a second name.
bool is_own(const std::string& file);
/// Makes a file that must not exist yet, with @p text as its content. @return false if it exists or cannot be
/// made
bool create_new(const std::string& file, std::string_view text);
/// The nanoseconds between the epoch and the last change of @p file, or of the link. @return false if nothing
/// has this name
bool last_modified(const std::string& file, long long& nanoseconds);
/// The same for now.
long long now();

/// Keeps other processes from choosing a log in the same directory, as long as it lives; does nothing where
/// that is not supported.
class DirectoryLock
{
public:
    explicit DirectoryLock(const std::string& directory);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

private:
    long long m_handle = -1;
};

} // namespace log_file
} // namespace tarqa::housekeeping
