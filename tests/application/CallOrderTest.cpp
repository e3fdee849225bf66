#include "SettingsTable.h"
#include "StartUpSteps.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

// In which order the application manager asks other libraries for something, and with which numbers.

namespace {

using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

/// The steps from construction to destruction.
class Steps
{
public:
    Steps()
    {
        start_up_steps::observe([this](const std::string& step) { m_steps.push_back(step); });
    }
    ~Steps() { start_up_steps::observe({}); }
    Steps(const Steps&) = delete;
    Steps& operator=(const Steps&) = delete;

    const std::vector<std::string>& all() const { return m_steps; }

private:
    std::vector<std::string> m_steps;
};

TEST(CallOrder, WindowHasTenMillisecondsForItsEventsBetweenShowingAndActivation)
{
    const StartedApplication started;
    QWidget window;
    QWidget splash;
    started.manager().top_level_widget(&window);
    {
        const Steps steps;
        started.manager().show();
        EXPECT_THAT(steps.all(), ElementsAre("show", "events for 10 ms", "activation"));
    }
    const Steps steps;
    started.manager().show(&splash);
    EXPECT_THAT(steps.all(), ElementsAre("show", "events for 10 ms", "activation"));
}

TEST(CallOrder, MainLoopIsLeftWithSuccess)
{
    const StartedApplication started;
    QWidget window;
    started.manager().top_level_widget(&window);
    const Steps steps;
    QTimer::singleShot(0, [&started] { started.manager().exit_main_loop(); });
    started.manager().main_loop();
    EXPECT_THAT(steps.all(), Contains("exit with 0"));
    EXPECT_THAT(steps.all(), Not(Contains("quit")));
}

TEST(CallOrder, MainLoopIsLeftWithSuccessFromAWorkerToo)
{
    const StartedApplication started;
    QWidget window;
    started.manager().top_level_widget(&window);
    const Steps steps;
    std::thread worker;
    QTimer::singleShot(0, [&] { worker = std::thread([&] { started.manager().exit_main_loop(); }); });
    started.manager().main_loop();
    worker.join();
    EXPECT_THAT(steps.all(), Contains("exit with 0"));
}

TEST(CallOrder, OutsideOfTheMainLoopThereIsNothingToLeave)
{
    const StartedApplication started;
    QWidget window;
    started.manager().top_level_widget(&window);
    const Steps steps;
    started.manager().exit_main_loop();
    EXPECT_THAT(steps.all(), IsEmpty());
}

TEST(CallOrder, ProgramQuitsBeforeItIsStartedAnew)
{
    const StartedApplication started(true, {"first", "second"});
    const Steps steps;
    ApplicationManager::relaunch();
    EXPECT_THAT(steps.all(), ElementsAre("quit", "new process test: test first second"));
}

TEST(CallOrder, NothingIsStartedAnewThatWasNeverStarted)
{
    const Steps steps;
    ApplicationManager::relaunch();
    EXPECT_THAT(steps.all(), ElementsAre("quit"));
}

TEST(CallOrder, PreferenceIsSetBeforeItIsStored)
{
    const StartedApplication started;
    for (const Setting& setting : settings_table()) {
        SCOPED_TRACE(setting.key);
        std::vector<std::string> values;
        start_up_steps::observe([&](const std::string& step) {
            if (step == "settings " + setting.group) {
                values.push_back(setting.get(started.manager()));
            }
        });
        setting.set(started.manager(), setting.others.front());
        start_up_steps::observe({});
        EXPECT_THAT(values, ElementsAre(setting.others.front()));
    }
}

} // namespace
