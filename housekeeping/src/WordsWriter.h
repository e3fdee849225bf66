#pragma once

#include "RunningCommand.h"

#include <cstddef>
#include <cstdint>

namespace tarqa::housekeeping {

/// Writes the last words of a dying program. Everything here is safe in a signal handler if the platform's
/// function is. Errors are passed over: there is nobody to tell.
class WordsWriter
{
public:
    /// Writes as many bytes to what @p handle stands for.
    typedef void (*Function)(std::intptr_t handle, const char* bytes, std::size_t count);

    WordsWriter(Function write, std::intptr_t handle)
        : m_write(write)
        , m_handle(handle)
    { }

    WordsWriter& operator<<(const char* text);
    WordsWriter& operator<<(unsigned long long number);
    WordsWriter& hexadecimal(std::uintptr_t number);

    /// One run, without a line end.
    WordsWriter& running_command(const RunningCommand::Entry& entry, long thread);
    /// The runs of commands that have not ended, a line each.
    void running_commands(long dying_thread);

private:
    void number(unsigned long long number, unsigned int base);

    Function m_write;
    std::intptr_t m_handle;
};

} // namespace tarqa::housekeeping
