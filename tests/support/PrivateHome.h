#pragma once

#include <string>

namespace support {

/**
 * A private home for the running test process: fresh directories for the home, the preferences and temporary
 * files, named in the environment before anything reads it, and deleted at the end. Also the offscreen
 * platform and UTF-8.
 */
class PrivateHome
{
public:
    PrivateHome();
    ~PrivateHome();
    PrivateHome(const PrivateHome&) = delete;
    PrivateHome& operator=(const PrivateHome&) = delete;

    /// Where the error logs of this process are.
    static std::string log_directory();
    /// A directory that a test may fill as it likes.
    static std::string scratch_directory();

private:
    std::string m_root;
};

} // namespace support
