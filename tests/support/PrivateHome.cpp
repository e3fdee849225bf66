#include "support/PrivateHome.h"

#include "HomeDirectories.h"

namespace support {

using tarqa::housekeeping::testkit::HomeDirectories;

PrivateHome::PrivateHome()
    : m_p_directories(std::make_unique<HomeDirectories>())
{ }

PrivateHome::~PrivateHome() = default;

std::string PrivateHome::log_directory()
{
    return HomeDirectories::log_directory();
}

std::string PrivateHome::scratch_directory()
{
    return HomeDirectories::scratch_directory();
}

} // namespace support
