#pragma once

#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <string>
#include <vector>

class QApplication;

namespace tarqa::housekeeping {
class ApplicationManager;
}

namespace tarqa::housekeeping::testkit {

/**
 * The application manager after init(), for one test: started with arguments of its own, and ended by the
 * ordered destruction when the object goes (or before: the test may call pkBase::pkDestructor::run() itself).
 * Widgets and documents of the test are to be gone, or the document manager's, by then.
 *
 *     int main(int argc, char** argv)
 *     {
 *         const PrivateHome home;
 *         const StartedApplication started;
 *         ...
 *     }
 *
 * Once in a process, main thread. File dialogs are Qt's own, which a DialogDriver can drive. The lines that
 * every start-up writes into the error log count as announced.
 */
class TQ_HK_TESTKIT_EXPORT StartedApplication
{
public:
    /// @param gui false for a program without windows @param arguments without the program's name
    explicit StartedApplication(bool gui = true, const std::vector<std::string>& arguments = {});
    ~StartedApplication();
    StartedApplication(const StartedApplication&) = delete;
    StartedApplication& operator=(const StartedApplication&) = delete;

    /// The application manager.
    ApplicationManager& manager() const;
    /// Its application object.
    QApplication& application() const;
    /// What init() left of the command line, the program's name included.
    std::vector<std::string> arguments() const;
    /// What was written into the error log until the start-up was over, beyond what every one writes.
    const std::vector<std::string>& unannounced_log_lines() const { return m_unannounced; }

private:
    std::vector<std::string> m_texts;
    std::vector<char*> m_pointers; // into m_texts, and a null at the end
    int m_argc;
    char** m_argv;
    std::vector<std::string> m_unannounced;
};

} // namespace tarqa::housekeeping::testkit
