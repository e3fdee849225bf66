#pragma once

#include <string>

#include <sys/types.h>

/// The session lock file and the temporary directories that it guards.
namespace lock_files {

/// The lock file that @p process holds a lock on, full path; empty if there is none.
std::string held_by(pid_t process);

/// A lock on a file, which is made if it does not exist, as another program of the session would hold it.
class OtherLock
{
public:
    enum Kind
    {
        Read,
        Write
    };
    explicit OtherLock(const std::string& file, Kind kind = Write);
    ~OtherLock();
    OtherLock(const OtherLock&) = delete;
    OtherLock& operator=(const OtherLock&) = delete;

    /// False if somebody else has one.
    bool held() const { return m_held; }

private:
    int m_descriptor;
    bool m_held;
};

/// Whether another program could lock the file now.
bool is_free(const std::string& file);

/// A temporary directory of this kind, with a file in it, that a killed process left behind; its path.
std::string abandoned_directory(const std::string& kind);

} // namespace lock_files
