#include <tarqa/testkit/PrivateHome.h>

#include "HomeDirectories.h"

namespace tarqa::housekeeping::testkit {

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

} // namespace tarqa::housekeeping::testkit
