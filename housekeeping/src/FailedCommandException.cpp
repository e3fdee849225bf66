#include <tarqa/housekeeping/FailedCommandException.h>

namespace tarqa::housekeeping {

FailedCommandException::FailedCommandException(
    unsigned int code, const std::string& message, const char* file, unsigned int line)
    : HousekeepingException(code, message, file, line)
{ }

FailedCommandException::FailedCommandException(
    unsigned int code, const QString& message, const char* file, unsigned int line)
    : HousekeepingException(code, message, file, line)
{ }

FailedCommandException::FailedCommandException(
    unsigned int code, const char* message, const char* file, unsigned int line)
    : HousekeepingException(code, message, file, line)
{ }

FailedCommandException::FailedCommandException(const FailedCommandException&) = default;
FailedCommandException& FailedCommandException::operator=(const FailedCommandException&) = default;
FailedCommandException::~FailedCommandException() = default;

void FailedCommandException::log_information(std::ostream& stream) const
{
    HousekeepingException::log_information(stream);
}

const char* FailedCommandException::what() const
{
    return HousekeepingException::what();
}

} // namespace tarqa::housekeeping
