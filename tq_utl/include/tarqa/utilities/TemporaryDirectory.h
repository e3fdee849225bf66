#pragma once

#include <tarqa/utilities/ExceptionTemplate.h>
#include <tarqa/utilities/tq_utl_export.h>

#include <memory>
#include <string>

namespace tarqa::utilities {

/// Tells TemporaryDirectoryException from the other exception types.
struct TQ_UTL_EXPORT TemporaryDirectoryTag
{ };

} // namespace tarqa::utilities

namespace tarqa {

extern template class TQ_UTL_EXPORT ExceptionTemplate<Exception, utilities::TemporaryDirectoryTag>;

} // namespace tarqa

namespace tarqa::utilities {

class TemporaryDirectoryLock;

/// Thrown when a temporary directory cannot be made; code 2001.
typedef ExceptionTemplate<Exception, TemporaryDirectoryTag> TemporaryDirectoryException;

/**
 * A fresh, private directory below the system's temporary directory, deleted with all its contents by the
 * destructor.
 *
 * While the object lives it holds an advisory lock on the directory itself, so that the clean-up of another
 * process (clear_existing_temp_directories()) can tell a directory that somebody lives in from one that a
 * killed process left behind. A child process that inherits the object by fork deletes nothing. One object
 * belongs to one thread at a time.
 */
class TQ_UTL_EXPORT TemporaryDirectory
{
public:
    /// @param kind start of the directory's name, for example "vista"; anything but letters, digits, '.' and
    /// '_' in it becomes '_'
    /// @throws TemporaryDirectoryException with the system's reason if the directory cannot be made
    explicit TemporaryDirectory(const std::string& kind);
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// Absolute file-system path, without a slash at its end.
    const std::string& path() const { return m_path; }

private:
    std::unique_ptr<TemporaryDirectoryLock> m_lock;
    std::string m_path;
};

/// True if the temporary directory holds a directory of that kind that belongs to this user and that nobody
/// lives in, or what a process left that was killed while it made one, more than a day ago. One that another
/// process is just asking the same about counts as lived in.
TQ_UTL_EXPORT bool temporary_directories_exist(const std::string& kind);

/// Deletes the directories of that kind that belong to this user and that nobody lives in, with their
/// contents. Leaves alone: directories of living processes (this one included), of other users, symbolic
/// links and what they point to, files, and whatever cannot be deleted. Never throws.
TQ_UTL_EXPORT void clear_existing_temp_directories(const std::string& kind);

} // namespace tarqa::utilities
