#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace faults {

/// The calls to the operating system that can be made to fail, by what they are for.
enum class Call
{
    Open,
    Read,
    Write,
    Close,
    Flush, ///< to the disk
    Truncate,
    Rename,
    Remove, ///< a file or a directory
    MakeDirectory,
    Lock
};

enum class Manner
{
    Once,
    FromThenOn, ///< and all later calls that can give this error
    Short, ///< half of what was asked for is read or written, without an error
    ShortThenError ///< half of it is, and all later calls that can give this error do
};

struct Fault
{
    Manner manner = Manner::Once;
    int error = 0; ///< what errno becomes
};

/// Whether the system may give this fault in such a call.
bool is_possible(Call call, const Fault& fault);
/// "ENOSPC from then on", for example.
std::string text(const Fault& fault);

/**
 * Stands between this process, the libraries included, and the C library: counts the calls that concern
 * certain files while it lives, and makes one of them fail. A program that links this has the calls of
 * SystemCalls_unix.cpp in the place of the C library's; without an object of this class they only pass on.
 *
 *     SystemFaults counting(directory);       // counts
 *     act();
 *     SystemFaults failing(directory, 3, {Manner::Once, ENOSPC});  // the fourth call fails
 *     act();
 *
 * One at a time. Calls of all threads are seen. A process that is forked takes it along.
 */
class SystemFaults
{
public:
    /// One call that was seen.
    struct Point
    {
        Call call;
        std::string path; ///< its end
    };

    /// Only counts. @param path_part calls are looked at if the file's path holds this
    explicit SystemFaults(const std::string& path_part);
    /// @param at which of the calls fails, counted from 0
    SystemFaults(const std::string& path_part, std::size_t at, const Fault& fault);
    ~SystemFaults();
    SystemFaults(const SystemFaults&) = delete;
    SystemFaults& operator=(const SystemFaults&) = delete;

    std::vector<Point> points() const;
    /// How many calls were made to fail.
    std::size_t failures() const;
};

/// "write of Tarq_1.log", for example.
std::string text(const SystemFaults::Point& point);

/// What is to become of a call.
struct Verdict
{
    int error = 0; ///< errno; 0 if the call is to be made
    std::size_t allowed = 0; ///< how many of the bytes are to be read or written
};

// For the calls themselves. They allocate nothing, and are safe in signal handlers.
Verdict judge(Call call, const char* path, std::size_t bytes = 0);
Verdict judge(Call call, int descriptor, std::size_t bytes = 0);

} // namespace faults
