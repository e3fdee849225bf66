#include "support/StartedApplication.h"

#include "support/LogCapture.h"

#include <pkBase/pkDestructor.h>

#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

namespace support {

using tarqa::housekeeping::ApplicationManager;

namespace {

std::vector<char*> pointers_to(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> command_line(const std::vector<std::string>& arguments)
{
    std::vector<std::string> line = {"test"};
    line.insert(line.end(), arguments.begin(), arguments.end());
    return line;
}

} // namespace

StartedApplication::StartedApplication(bool gui, const std::vector<std::string>& arguments)
    : m_texts(command_line(arguments))
    , m_pointers(pointers_to(m_texts))
    , m_argc(static_cast<int>(m_texts.size()))
    , m_argv(m_pointers.data())
{
    LogCapture log;
    init(gui);
    take_start_up_lines(log);
}

StartedApplication::StartedApplication(LogCapture&, bool gui, const std::vector<std::string>& arguments)
    : m_texts(command_line(arguments))
    , m_pointers(pointers_to(m_texts))
    , m_argc(static_cast<int>(m_texts.size()))
    , m_argv(m_pointers.data())
{
    init(gui);
}

StartedApplication::~StartedApplication()
{
    pkBase::pkDestructor::run();
}

void StartedApplication::init(bool gui)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // which a DialogDriver cannot drive
    ApplicationManager::instance().init(m_argc, m_argv, "test", gui);
}

ApplicationManager& StartedApplication::manager() const
{
    return ApplicationManager::instance();
}

QApplication& StartedApplication::application() const
{
    return *manager().qapplication();
}

std::vector<std::string> StartedApplication::arguments() const
{
    return std::vector<std::string>(m_argv, m_argv + m_argc);
}

void take_start_up_lines(LogCapture& log)
{
    while (log.take("post-Qt init Path: ")) { }
    EXPECT_TRUE(log.take("Background rendering is O")) << "no start-up in the error log";
}

} // namespace support
