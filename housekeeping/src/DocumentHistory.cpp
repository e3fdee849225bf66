#include <tarqa/housekeeping/DocumentHistory.h>

namespace tarqa::housekeeping {

DocumentHistory::DocumentHistory(const std::string& program, const std::string& version,
    const std::string& user, const std::string& name, const std::string& date)
    : m_program(program)
    , m_version(version)
    , m_user(user)
    , m_name(name)
    , m_date(date)
{ }

DocumentHistory::DocumentHistory(const DocumentHistory&) = default;
DocumentHistory& DocumentHistory::operator=(const DocumentHistory&) = default;
DocumentHistory::~DocumentHistory() = default;

std::string DocumentHistory::description() const
{
    return m_program + ' ' + m_version + " on " + m_date + " by " + m_user;
}

} // namespace tarqa::housekeeping
