#pragma once

#include <tarqa/utilities/tq_utl_export.h>

#include <iosfwd>
#include <string>

namespace tarqa::utilities {

/**
 * A description of the machine, for the head of the error log. Read from the system at every call; what the
 * system does not tell is left out. Any thread.
 */
class TQ_UTL_EXPORT Hardware
{
public:
    Hardware() = delete;

    /// For example "Debian GNU/Linux 12 (bookworm)".
    static std::string operating_system();
    /// Name and version of the kernel, for example "linux 6.1.0-18-amd64".
    static std::string kernel();
    /// Model name of the first processor; empty if unknown.
    static std::string processor();
    /// Logical processors that this process may use; at least 1.
    static unsigned int processor_count();
    /// Physical memory in bytes; 0 if unknown.
    static unsigned long long physical_memory();

    /// Writes one "name: value" line per fact to @p stream.
    static void write_to_log(std::ostream& stream);
};

} // namespace tarqa::utilities
