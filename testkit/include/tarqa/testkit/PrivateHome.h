#pragma once

#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <memory>
#include <string>

namespace tarqa::housekeeping::testkit {

class HomeDirectories;

/**
 * A private home for the running test program: fresh directories for the home, the preferences, the cache and
 * temporary files, named in the environment, and deleted at the end. Also the offscreen platform (unless
 * QT_QPA_PLATFORM names one), UTF-8, and no message bus.
 *
 * To be the first object of main(), before anything reads the environment or logs; the environment is not put
 * back. Main thread.
 */
class TQ_HK_TESTKIT_EXPORT PrivateHome
{
public:
    /// @throws std::runtime_error if the directories cannot be made
    PrivateHome();
    ~PrivateHome();
    PrivateHome(const PrivateHome&) = delete;
    PrivateHome& operator=(const PrivateHome&) = delete;

    /// Where the error logs of this process are.
    static std::string log_directory();
    /// A directory that a test may fill as it likes; empty without a private home.
    static std::string scratch_directory();

private:
    std::unique_ptr<HomeDirectories> m_p_directories;
};

} // namespace tarqa::housekeeping::testkit
