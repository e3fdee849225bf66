#include "LockFiles.h"
#include "StartUpSteps.h"
#include "support/LogCapture.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/QPKProxyStyle.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/MessageHandler.h>

#include <QtCore/QThreadPool>
#include <QtWidgets/QApplication>

// One set of behaviours in the whole program: with hidden visibility the test would have its own.
#pragma GCC visibility push(default)
#include <CGAL/assertions.h>
#pragma GCC visibility pop

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using namespace tarqa::housekeeping;
using support::LogCapture;
using support::StartedApplication;
using testing::ElementsAre;

/// What held just before a step.
struct Moment
{
    std::string step;
    std::string log;
    bool viewer_knows_the_log;
    bool style_is_the_makers;
    bool message_handler;
    bool cgal_goes_on;
    bool lock_is_held;
    bool abandoned_directory;
};

bool cgal_goes_on()
{
    const CGAL::Failure_behaviour errors = CGAL::set_error_behaviour(CGAL::ABORT);
    CGAL::set_error_behaviour(errors);
    const CGAL::Failure_behaviour warnings = CGAL::set_warning_behaviour(CGAL::ABORT);
    CGAL::set_warning_behaviour(warnings);
    return errors == CGAL::CONTINUE && warnings == CGAL::CONTINUE;
}

/// A start-up whose every step is noted.
class StartUpOrder : public testing::Test
{
protected:
    StartUpOrder()
    {
        unsetenv("QT_DEVICE_PIXEL_RATIO");
        unsetenv("TARQ_NO_BACKGROUND_RENDERING");
        CGAL::set_warning_behaviour(CGAL::ABORT); // from the beginning they go on
        s_p_test = this;
        qAddPreRoutine([] { s_p_test->note("application object"); });
        start_up_steps::observe([this](const std::string& step) { note(step); });
        int count = 1;
        char name[] = "test";
        char* arguments[] = {name, nullptr};
        char** p_arguments = arguments;
        ApplicationManager::instance().init(count, p_arguments, "test", true);
        start_up_steps::observe({});
        support::take_start_up_lines(m_log);
    }

    std::vector<std::string> steps() const
    {
        std::vector<std::string> steps;
        for (const Moment& moment : m_moments) {
            steps.push_back(moment.step);
        }
        return steps;
    }

    /// The last time that the step was made.
    const Moment& before(const std::string& step) const
    {
        for (std::size_t i = m_moments.size(); i > 0; --i) {
            if (m_moments[i - 1].step == step) {
                return m_moments[i - 1];
            }
        }
        throw std::runtime_error("not made: " + step);
    }

    static std::string path_lines()
    {
        std::string lines;
        for (const QString& path : QCoreApplication::libraryPaths()) {
            lines += "post-Qt init Path: " + path.toStdString() + "\n";
        }
        return lines;
    }

private:
    void note(const std::string& step)
    {
        // Neither widgets nor styles can be asked for earlier.
        const bool has_application
            = QCoreApplication::instance() && step != "application object" && step != "window icon";
        const auto* const p_style
            = has_application ? qobject_cast<const pkBase::QPKProxyStyle*>(QApplication::style()) : nullptr;
        const bool viewer_has_path = has_application && !pkBase::QLogFileViewer::instance().path().isEmpty();
        m_moments.push_back({step, m_log.text(), viewer_has_path, p_style != nullptr,
            TestAccess::peek<MessageHandler>() != nullptr, cgal_goes_on(),
            !lock_files::held_by(getpid()).empty(), std::filesystem::exists(m_abandoned)});
    }

    static inline StartUpOrder* s_p_test = nullptr;

    LogCapture m_log;
    const std::string m_abandoned = lock_files::abandoned_directory("vista");
    std::vector<Moment> m_moments;
};

TEST_F(StartUpOrder, StepsAreMadeOneAfterTheOther)
{
    EXPECT_THAT(steps(),
        ElementsAre("variable QT_DEVICE_PIXEL_RATIO", "lock file", "library path bin/plugins",
            "library path Release/plugins", "library path RelWithDebInfo/plugins",
            "library path Debug/plugins", "library path bin/qml", "library path Release/qml",
            "library path RelWithDebInfo/qml", "library path Debug/qml", "QML type", "attribute 15",
            "attribute 18",
            "messages of Qt", // Qt's advice against the first step is kept back
            "application object", "window icon", "messages of Qt", "messages of Qt", "style", "thread pool",
            "settings application", "settings performance_options", "settings viewer_options",
            "settings animation_tool", "temporary directories", "data GDAL_data/", "data PROJ_data/proj.db",
            "messages of GDAL", "option GDAL_FIX_ESRI_WKT", "messages of OpenSceneGraph"));
}

TEST_F(StartUpOrder, LibraryPathsAreLoggedBetweenTheApplicationObjectAndTheHookOfQtsMessages)
{
    EXPECT_EQ(before("window icon").log, "");
    EXPECT_EQ(before("messages of Qt").log, path_lines());
}

TEST_F(StartUpOrder, ViewerOfTheLogComesBetweenTheHookAndTheStyle)
{
    EXPECT_FALSE(before("messages of Qt").viewer_knows_the_log);
    EXPECT_TRUE(before("style").viewer_knows_the_log);
}

TEST_F(StartUpOrder, MessageHandlerComesBetweenTheStyleAndTheThreadPool)
{
    EXPECT_FALSE(before("style").style_is_the_makers);
    EXPECT_FALSE(before("style").message_handler);
    EXPECT_TRUE(before("thread pool").style_is_the_makers);
    EXPECT_TRUE(before("thread pool").message_handler);
}

TEST_F(StartUpOrder, BackgroundRenderingIsLoggedBetweenTheThreadPoolAndTheSettings)
{
    EXPECT_EQ(before("thread pool").log, path_lines());
    EXPECT_EQ(before("settings application").log, path_lines() + "Background rendering is ON\n");
}

TEST_F(StartUpOrder, CleanUpComesBetweenTheSettingsAndTheDataOfGDAL)
{
    EXPECT_FALSE(before("settings animation_tool").lock_is_held);
    EXPECT_TRUE(before("temporary directories").lock_is_held);
    EXPECT_TRUE(before("temporary directories").abandoned_directory);
    EXPECT_FALSE(before("data GDAL_data/").abandoned_directory);
}

TEST_F(StartUpOrder, MessagesOfCGALComeBetweenTheDataAndTheMessagesOfGDAL)
{
    EXPECT_FALSE(before("data PROJ_data/proj.db").cgal_goes_on);
    EXPECT_TRUE(before("messages of GDAL").cgal_goes_on);
}

// --- thread pool, on machines that are not this one

struct Machine
{
    int processors;
    int threads_before;
    int threads_after;
};

std::ostream& operator<<(std::ostream& stream, const Machine& machine)
{
    return stream << machine.processors << " processors";
}

class StartUpThreadPool : public testing::TestWithParam<Machine>
{ };

INSTANTIATE_TEST_SUITE_P(Machines, StartUpThreadPool,
    testing::Values(Machine{2, 7, 7}, Machine{3, 4, 4}, Machine{4, 3, 2}, Machine{4, 4, 3}, Machine{4, 5, 3},
        Machine{4, 8, 6}, Machine{5, 5, 3}, Machine{8, 8, 6}),
    [](const testing::TestParamInfo<Machine>& machine) {
        return std::to_string(machine.param.threads_before) + "ThreadsOn"
            + std::to_string(machine.param.processors) + "Processors";
    });

TEST_P(StartUpThreadPool, IsSized)
{
    start_up_steps::pretend_processors(GetParam().processors);
    QThreadPool& pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(GetParam().threads_before);
    const StartedApplication started;
    EXPECT_EQ(pool.maxThreadCount(), GetParam().threads_after);
}

} // namespace
