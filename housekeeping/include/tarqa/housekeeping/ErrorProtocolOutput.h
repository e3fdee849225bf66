#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <fstream>
#include <memory>

namespace tarqa::housekeeping {

class ErrorProtocol;
class GuardedLocker;
class LogHolder;

/**
 * A free-form entry in the error log: a stream that appends to the log file and ends the entry with a line
 * end.
 *
 * What is more than the stream's buffer reaches the file in pieces: a process that is killed meanwhile may
 * leave the beginning of the entry.
 *
 * It holds the log's mutex as long as it lives, so it is to be short-lived, and the thread that holds one
 * should log nothing else meanwhile (that would go to the standard error stream). Lives on the stack of one
 * thread.
 *
 *     ErrorProtocolOutput() << "read " << count << " cells of document " << id.getId();
 */
class TQ_HK_EXPORT ErrorProtocolOutput : public std::ofstream
{
public:
    ErrorProtocolOutput();
    ~ErrorProtocolOutput() override;
    ErrorProtocolOutput(const ErrorProtocolOutput&) = delete;
    ErrorProtocolOutput& operator=(const ErrorProtocolOutput&) = delete;

    /// Writes the number in decimal, the largest one (all bits set) as "NULL".
    ErrorProtocolOutput& operator<<(unsigned long long number);

    // The overload above hides the stream's own, and would take every number of another type: forward these.
    /// Writes the number in decimal.
    ErrorProtocolOutput& operator<<(unsigned long number) { return forward(number); }
    /// Applies a manipulator, std::endl for example.
    ErrorProtocolOutput& operator<<(std::ostream& (*manipulator)(std::ostream&))
    {
        return forward(manipulator);
    }
    /// Writes whatever a stream writes.
    template <class T>
    ErrorProtocolOutput& operator<<(const T& value) &
    {
        return forward(value);
    }
    /// The same for a temporary, for which the standard operator for temporary streams would be as good a
    /// match.
    template <class T>
    friend ErrorProtocolOutput& operator<<(ErrorProtocolOutput&& output, const T& value)
    {
        return output.forward(value);
    }

private:
    template <class T>
    ErrorProtocolOutput& forward(const T& value)
    {
        static_cast<std::ostream&>(*this) << value;
        return *this;
    }

    ErrorProtocol& m_log;
    bool m_nested; // this thread holds the log already
    std::unique_ptr<GuardedLocker> m_locker;
    std::unique_ptr<LogHolder> m_holder;
};

} // namespace tarqa::housekeeping
