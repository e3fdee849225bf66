#pragma once

#include <tarqa/housekeeping/HousekeepingException.h>

namespace tarqa::housekeeping {

/// Unwinds a command that the user cancelled. Not an error: nothing is shown, and it writes nothing in a log.
/// Thrown out of an undo, which cannot be cancelled, it is fatal all the same and shown with its text. A
/// plain value; used in the thread of the run.
class TQ_HK_EXPORT CancelCommandException
    : public ExceptionTemplate<HousekeepingException, HousekeepingExceptionTag>
{
public:
    /// Keeps the code, message, place and trail of @p cause.
    explicit CancelCommandException(const HousekeepingException& cause);
    CancelCommandException(const CancelCommandException&);
    CancelCommandException& operator=(const CancelCommandException&);

    ~CancelCommandException() override;
    /// Writes nothing, deliberately.
    void log_information(std::ostream& stream) const override;
    /// The text of the cause.
    const char* what() const override;
};

} // namespace tarqa::housekeeping
