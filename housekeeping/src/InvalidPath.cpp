#include <tarqa/housekeeping/InvalidPath.h>

#include <ostream>

namespace tarqa::housekeeping {

InvalidPath::InvalidPath(unsigned int code, const std::string& message, const char* file, unsigned int line,
    const std::string& path)
    : HousekeepingException(code, message, file, line)
    , m_path(path)
{ }

InvalidPath::InvalidPath(
    unsigned int code, const QString& message, const char* file, unsigned int line, const std::string& path)
    : HousekeepingException(code, message, file, line)
    , m_path(path)
{ }

InvalidPath::InvalidPath(
    unsigned int code, const char* message, const char* file, unsigned int line, const std::string& path)
    : HousekeepingException(code, message, file, line)
    , m_path(path)
{ }

InvalidPath::InvalidPath(const InvalidPath&) = default;
InvalidPath& InvalidPath::operator=(const InvalidPath&) = default;
InvalidPath::~InvalidPath() = default;

void InvalidPath::log_information(std::ostream& stream) const
{
    HousekeepingException::log_information(stream);
    stream << "Faulty path = \"" << m_path << "\"\n";
}

const char* InvalidPath::what() const
{
    return HousekeepingException::what();
}

} // namespace tarqa::housekeeping
