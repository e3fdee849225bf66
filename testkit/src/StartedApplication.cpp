#include <tarqa/testkit/StartedApplication.h>

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/testkit/LogCapture.h>

#include <QtWidgets/QApplication>

#include <algorithm>
#include <iterator>

namespace tarqa::housekeeping::testkit {

namespace {

// What every start-up writes: the library paths, and whether background rendering is on.
const char* const s_start_up_lines[] = {"post-Qt init Path: ", "Background rendering is O"};

bool is_start_up_line(const std::string& line)
{
    return std::any_of(std::begin(s_start_up_lines), std::end(s_start_up_lines),
        [&line](const char* part) { return line.find(part) != std::string::npos; });
}

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
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // which a DialogDriver cannot drive
    ApplicationManager::instance().init(m_argc, m_argv, "test", gui);
    for (const std::string& line : testkit::unannounced_log_lines()) { // not before: that would begin a log
        if (!is_start_up_line(line)) {
            m_unannounced.push_back(line);
        }
    }
}

StartedApplication::~StartedApplication()
{
    pkBase::pkDestructor::run();
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

} // namespace tarqa::housekeeping::testkit
