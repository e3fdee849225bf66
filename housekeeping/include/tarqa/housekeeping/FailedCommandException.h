#pragma once

#include <tarqa/housekeeping/HousekeepingException.h>

namespace tarqa::housekeeping {

/// An expected failure of a command: it is shown to the user and the command is rolled back. A plain
/// value; used in the thread of the run, which shows nothing but on the main thread (see ErrorHandler).
class TQ_HK_EXPORT FailedCommandException : public HousekeepingException
{
public:
    /// As HousekeepingException.
    FailedCommandException(
        unsigned int code, const std::string& message, const char* file, unsigned int line);
    FailedCommandException(unsigned int code, const QString& message, const char* file, unsigned int line);
    FailedCommandException(unsigned int code, const char* message, const char* file, unsigned int line);
    FailedCommandException(const FailedCommandException&);
    FailedCommandException& operator=(const FailedCommandException&);

    ~FailedCommandException() override;
    /// As tarqa::Exception.
    void log_information(std::ostream& stream) const override;
    /// As tarqa::Exception.
    const char* what() const override;
};

} // namespace tarqa::housekeeping
