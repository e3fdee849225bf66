#include "batch/System.h"

#include <csignal>
#include <cstdio>

#include <io.h>

namespace terrain {

namespace {

volatile std::sig_atomic_t s_interrupted = 0;

extern "C" void take_interrupt(int)
{
    s_interrupted = 1; // the handler was reset before this call, so a second one ends the program
}

} // namespace

void watch_signals()
{
    s_interrupted = 0;
    std::signal(SIGINT, &take_interrupt);
}

bool interrupted()
{
    return s_interrupted != 0;
}

bool standard_error_is_terminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

bool has_display()
{
    return true;
}

} // namespace terrain
