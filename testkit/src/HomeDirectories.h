#pragma once

#include <string>

namespace tarqa::housekeeping::testkit {

/**
 * Fresh directories for the home, the preferences, temporary files and a test's own files, named in the
 * environment of this process and deleted at the end. Also the offscreen platform, UTF-8 and no message bus.
 *
 * Needs nothing of the framework, so that the tests of the libraries below it can have it, too.
 */
class HomeDirectories
{
public:
    /// @throws std::runtime_error if they cannot be made
    HomeDirectories();
    ~HomeDirectories();
    HomeDirectories(const HomeDirectories&) = delete;
    HomeDirectories& operator=(const HomeDirectories&) = delete;

    static std::string log_directory();
    static std::string scratch_directory();

private:
    std::string m_root;
};

} // namespace tarqa::housekeeping::testkit
