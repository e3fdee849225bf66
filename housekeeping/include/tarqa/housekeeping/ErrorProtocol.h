#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QMutex>

#include <exception>
#include <iosfwd>
#include <string>
#include <string_view>

namespace tarqa {
class Exception;
}

namespace tarqa::housekeeping {

/**
 * The error log: one plain-text file per run, in the user's preferences directory, for everything that went
 * wrong or is worth knowing afterwards.
 *
 * The file is chosen when the log is first used: the product's name, "_", a number from 1 to 20 and ".log";
 * when all twenty exist, the least recently modified one is overwritten. Every entry opens the file, is
 * appended in one piece and closes it again, so others may read the file meanwhile and a killed process loses
 * nothing that was logged. An entry that cannot be written is dropped: logging never throws and never stops
 * the program.
 *
 * Any thread; a non-recursive mutex keeps entries from interleaving. It is held only while the file is
 * written, never while somebody else's code runs, with one exception: an ErrorProtocolOutput holds it for its
 * whole life. An entry that the holding thread logs meanwhile goes to the standard error stream.
 *
 * A singleton, the last to go in phase 5 of the ordered destruction; it writes the closing banner then. What
 * is logged later is dropped.
 */
class TQ_HK_EXPORT ErrorProtocol
{
public:
    /// The one object; made at first use. After its destruction one that drops every entry.
    static ErrorProtocol& instance();
    /// The same, to look at only.
    static const ErrorProtocol& const_instance();

    /// Full path of the log file; empty after the log's destruction.
    const std::string& log_filename() const { return m_filename; }

    /// Writes @p text and a line end.
    void log_message(const std::string& text);
    /// Writes @p text exactly as it stands.
    void log_command(const std::string& text);
    /// Reports a failed check: its condition's source text, the signature of the function, source file and
    /// line. A null pointer is written as an empty text.
    void log_assert(const char* expression, const char* function, const char* file, unsigned int line);
    /// Reports an exception that was dealt with.
    void log_exception(const tarqa::Exception& exception);
    void log_exception(const std::exception& exception);
    /// Reports what ends the program. The text form deliberately empties the file first, so that the error
    /// stands alone; the three forms also differ deliberately in case and ending.
    void log_fatal_error(const std::string& text);
    void log_fatal_error(const tarqa::Exception& exception);
    void log_fatal_error(const std::exception& exception);

private:
    friend class ErrorProtocolOutput;
    friend class pkBase::pkSingleton<ErrorProtocol>;
    friend class TestAccess;

    enum class State
    {
        Open,
        Inert ///< drops every entry
    };

    explicit ErrorProtocol(State state = State::Open);
    virtual ~ErrorProtocol();
    ErrorProtocol(const ErrorProtocol&) = delete;
    ErrorProtocol& operator=(const ErrorProtocol&) = delete;

    static pkBase::pkSingleton<ErrorProtocol>& get_instance();
    static void destroy_instance();
    static void destroy_at_shutdown();

    void write(std::string_view text, bool empty_first = false);

    static const bool s_destruction_reserved;

    std::string m_filename; // empty: entries are dropped
    QMutex m_mutex; // the file
};

} // namespace tarqa::housekeeping
