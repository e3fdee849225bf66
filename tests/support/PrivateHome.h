#pragma once

#include <memory>
#include <string>

namespace tarqa::housekeeping::testkit {
class HomeDirectories;
}

namespace support {

/**
 * A private home for the running test process: fresh directories for the home, the preferences and temporary
 * files, named in the environment before anything reads it, and deleted at the end. Also the offscreen
 * platform and UTF-8.
 *
 * The kit's PrivateHome is the same for hosts; this one does without the framework.
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
    std::unique_ptr<tarqa::housekeeping::testkit::HomeDirectories> m_p_directories;
};

} // namespace support
