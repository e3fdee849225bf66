#pragma once

#include <tarqa/utilities/tq_utl_export.h>

#include <QtCore/QString>

#include <iosfwd>
#include <string>
#include <vector>

namespace tarqa {

/**
 * The root of the exceptions of the tarqa libraries.
 *
 * It is a root of its own and deliberately not a std::exception, so that a handler for standard exceptions
 * never takes one of ours by accident. It carries an error code, a message, the place where it was thrown
 * and a trail: every place that caught it and passed it on (caught_here()), and whatever exception it
 * replaced (catch_and_transfer()).
 *
 * Thrown by value, caught by (non-const) reference, passed on with `throw;`. A plain value without locks:
 * each thread uses its own copy. Texts are UTF-8.
 */
class TQ_UTL_EXPORT Exception
{
public:
    /**
     * @param code    the error code
     * @param message what went wrong, for the user; UTF-8
     * @param file    source file of the throw, for example "housekeeping/src/DocumentManager"; null counts as
     * ""
     * @param line    source line of the throw
     */
    Exception(unsigned int code, const std::string& message, const char* file, unsigned int line);
    Exception(unsigned int code, const QString& message, const char* file, unsigned int line);
    /// A literal would otherwise be ambiguous between the two; a null message counts as "".
    Exception(unsigned int code, const char* message, const char* file, unsigned int line);
    Exception(const Exception&);
    Exception& operator=(const Exception&);

    virtual ~Exception();

    /// Writes code, message, place of the throw and the trail, each on a line of its own, to @p stream.
    virtual void log_information(std::ostream& stream) const;

    /// The message; valid as long as the exception is neither destroyed nor assigned to.
    virtual const char* what() const;

    /// The error code; callers may look at it, users see the message.
    unsigned int code() const { return m_code; }
    /// What went wrong, for the user; UTF-8.
    const std::string& message() const { return m_message; }
    /// Source file of the throw.
    const std::string& file() const { return m_file; }
    /// Source line of the throw.
    unsigned int line() const { return m_line; }

    /// Appends a catch point to the trail: call it where the exception is caught and passed on.
    void caught_here(const char* file, unsigned int line);

    /// Takes over the history of @p caught, which this exception replaces: appends its code, message, place
    /// of the throw and its own trail to this exception's trail.
    void catch_and_transfer(const Exception& caught);

    /// The lines of the trail, oldest first.
    const std::vector<std::string>& trail() const { return m_trail; }

private:
    unsigned int m_code;
    std::string m_message;
    std::string m_file;
    unsigned int m_line;
    std::vector<std::string> m_trail;
};

/// Writes what log_information() writes.
TQ_UTL_EXPORT std::ostream& operator<<(std::ostream& stream, const Exception& exception);

} // namespace tarqa
