#pragma once

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/testkit/StartedApplication.h>

#include <memory>
#include <string>
#include <vector>

class QApplication;

namespace support {

class LogCapture;

/**
 * The application manager after init(), for one test: started with arguments of its own, and ended by the
 * ordered destruction when the object goes (or before: the test may call pkBase::pkDestructor::run() itself).
 * Widgets and spies are to be declared after it, so that they go first.
 *
 *     StartedApplication started;          // takes the start-up lines out of the error log
 *     LogCapture log;                      // sees what comes later
 *
 * or, for a test that looks at the start-up itself,
 *
 *     LogCapture log;
 *     StartedApplication started(log);     // leaves the start-up lines to the test
 *     take_start_up_lines(log);
 */
class StartedApplication
{
public:
    /// @param arguments without the program's name
    explicit StartedApplication(bool gui = true, const std::vector<std::string>& arguments = {});
    /// As above, inside the test's own capture @p log.
    explicit StartedApplication(
        LogCapture& log, bool gui = true, const std::vector<std::string>& arguments = {});
    ~StartedApplication();
    StartedApplication(const StartedApplication&) = delete;
    StartedApplication& operator=(const StartedApplication&) = delete;

    tarqa::housekeeping::ApplicationManager& manager() const;
    QApplication& application() const;
    /// What init() left of the command line, the program's name included.
    std::vector<std::string> arguments() const;

private:
    std::unique_ptr<tarqa::housekeeping::testkit::StartedApplication> m_p_started;
};

/// Takes the lines that every start-up writes: the library paths, and whether background rendering is on.
/// Fails the test if the latter is missing.
void take_start_up_lines(LogCapture& log);

} // namespace support
