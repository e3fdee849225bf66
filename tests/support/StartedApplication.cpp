#include "support/StartedApplication.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace support {

using tarqa::housekeeping::ApplicationManager;
namespace testkit = tarqa::housekeeping::testkit;

StartedApplication::StartedApplication(bool gui, const std::vector<std::string>& arguments)
{
    LogCapture log;
    m_p_started = std::make_unique<testkit::StartedApplication>(gui, arguments);
    take_start_up_lines(log);
}

StartedApplication::StartedApplication(LogCapture&, bool gui, const std::vector<std::string>& arguments)
    : m_p_started(std::make_unique<testkit::StartedApplication>(gui, arguments))
{ }

StartedApplication::~StartedApplication() = default;

ApplicationManager& StartedApplication::manager() const
{
    return m_p_started->manager();
}

QApplication& StartedApplication::application() const
{
    return m_p_started->application();
}

std::vector<std::string> StartedApplication::arguments() const
{
    return m_p_started->arguments();
}

void take_start_up_lines(LogCapture& log)
{
    while (log.take("post-Qt init Path: ")) { }
    EXPECT_TRUE(log.take("Background rendering is O")) << "no start-up in the error log";
}

} // namespace support
