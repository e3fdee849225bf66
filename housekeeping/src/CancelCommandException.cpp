#include <tarqa/housekeeping/CancelCommandException.h>

namespace tarqa::housekeeping {

CancelCommandException::CancelCommandException(const HousekeepingException& cause)
    : ExceptionTemplate<HousekeepingException, HousekeepingExceptionTag>(cause)
{ }

CancelCommandException::CancelCommandException(const CancelCommandException&) = default;
CancelCommandException& CancelCommandException::operator=(const CancelCommandException&) = default;
CancelCommandException::~CancelCommandException() = default;

void CancelCommandException::log_information(std::ostream&) const
{
    // Deliberately empty.
}

const char* CancelCommandException::what() const
{
    return HousekeepingException::what();
}

} // namespace tarqa::housekeeping
