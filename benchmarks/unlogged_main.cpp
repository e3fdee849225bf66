// For what is measured apart from the log. The library has no switch for it, but it drops every entry where
// the directory of the logs is somebody else's: the entry is still rendered and handed to the log, and no
// file is opened or written.

#include "Program.h"

#include "support/PrivateHome.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <unistd.h>

namespace {

/// Ends the program if the log is written all the same: the figures would be worthless.
void give_log_directory_away()
{
    const std::string directory = support::PrivateHome::log_directory();
    if (geteuid() == 0) {
        constexpr uid_t somebody_else = 65534;
        std::filesystem::create_directory(directory);
        if (chown(directory.c_str(), somebody_else, static_cast<gid_t>(-1)) != 0) {
            std::perror(directory.c_str());
        }
    } else {
        std::filesystem::create_directory_symlink("/", directory);
    }
    const std::string log = tarqa::housekeeping::ErrorProtocol::const_instance().log_filename();
    if (!log.empty()) {
        std::fprintf(stderr, "there is a log: %s\n", log.c_str());
        std::abort();
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return run_benchmarks(argc, argv, &give_log_directory_away);
}
