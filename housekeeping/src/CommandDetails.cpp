#include <tarqa/housekeeping/CommandDetails.h>

namespace tarqa::housekeeping {

CommandDetails::CommandDetails() = default;

CommandDetails::CommandDetails(const std::string& name, const std::string& description, const QIcon& icon)
    : m_name(name)
    , m_description(description)
    , m_icon(icon)
{ }

CommandDetails::CommandDetails(const CommandDetails&) = default;
CommandDetails& CommandDetails::operator=(const CommandDetails&) = default;
CommandDetails::~CommandDetails() = default;

} // namespace tarqa::housekeeping
