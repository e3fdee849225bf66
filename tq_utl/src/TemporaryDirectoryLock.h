#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tarqa::utilities {

/**
 * The hold on a temporary directory: as long as one process has it, no other gets it. The system lets go of
 * it when the process ends, however it ends. Implemented once per system.
 *
 * Owned by the TemporaryDirectory, or for a moment by the clean-up. One thread at a time.
 */
class TemporaryDirectoryLock
{
public:
    /// In front of the name of a directory that is made but not locked yet. No kind of directory gives a name
    /// like it.
    static constexpr const char* half_made = ".new-";

    /// Makes in @p parent, which ends with a slash, a directory "<kind>-<process>-<six letters or digits>"
    /// that is private to this user, and takes hold of it.
    /// @throws std::system_error with the system's reason; then nothing is left behind
    static std::unique_ptr<TemporaryDirectoryLock> create(const std::string& parent, const std::string& kind);

    /// Takes hold of the directory @p path; null unless it is a real directory (no link to one) of this user
    /// that nobody has a hold on.
    static std::unique_ptr<TemporaryDirectoryLock> take(const std::string& path);

    ~TemporaryDirectoryLock();
    TemporaryDirectoryLock(const TemporaryDirectoryLock&) = delete;
    TemporaryDirectoryLock& operator=(const TemporaryDirectoryLock&) = delete;

    const std::string& path() const { return m_path; }

    /// Deletes the directory with its contents, following no link; what cannot be deleted stays. Does nothing
    /// in a process that only inherited the hold. Throws nothing but std::bad_alloc.
    void remove();

private:
    TemporaryDirectoryLock(const std::string& path, std::intptr_t handle);

    std::string m_path;
    std::intptr_t m_handle; // descriptor or handle of the directory; owned
    long long m_process; // the process that took hold
};

} // namespace tarqa::utilities
