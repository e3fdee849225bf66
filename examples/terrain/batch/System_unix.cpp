#include "batch/System.h"

#include <csignal>
#include <cstdlib>
#include <initializer_list>

#include <unistd.h>

namespace terrain {

namespace {

volatile std::sig_atomic_t s_interrupted = 0;

extern "C" void take_interrupt(int)
{
    s_interrupted = 1;
}

} // namespace

void watch_signals()
{
    s_interrupted = 0;
    struct sigaction action = {};
    action.sa_handler = &take_interrupt;
    // Without SA_RESTART, so that waiting for the next line of the standard input ends too.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

bool interrupted()
{
    return s_interrupted != 0;
}

bool standard_error_is_terminal()
{
    return isatty(STDERR_FILENO) != 0;
}

bool has_display()
{
    // The third one is for platforms that need none.
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* const value = std::getenv(name);
        if (value && *value) {
            return true;
        }
    }
    return false;
}

} // namespace terrain
