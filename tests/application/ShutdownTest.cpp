#include "LockFiles.h"
#include "support/LogCapture.h"
#include "support/Phases.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/ThreadLocal.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QtDebug>
#include <QtWidgets/QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <unistd.h>

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::ErrorHandler;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::MessageHandler;
using tarqa::housekeeping::QuickHelpManager;
using tarqa::housekeeping::TestAccess;
using tarqa::housekeeping::ThreadLocal;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Shutdown, ManagerGoesInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<ApplicationManager>());
}

TEST(Shutdown, ManagerMakesTheHandlerOfErrorsFirst)
{
    EXPECT_EQ(TestAccess::peek<ErrorHandler>(), nullptr);
    EXPECT_EQ(TestAccess::peek<ThreadLocal>(), nullptr);
    ApplicationManager::instance();
    ASSERT_NE(TestAccess::peek<ErrorHandler>(), nullptr);
    ASSERT_NE(TestAccess::peek<ThreadLocal>(), nullptr);

    // What was made first goes last.
    std::string living;
    QObject::connect(&ErrorHandler::instance(), &QObject::destroyed, [&living] {
        living += TestAccess::peek<ApplicationManager>() ? "manager " : "";
        living += TestAccess::peek<ThreadLocal>() ? "threads " : "";
        living += "handler";
    });
    pkBase::pkDestructor::run();
    EXPECT_EQ(living, "handler");
}

TEST(Shutdown, ManagerGoesBeforeWhatItWasBuiltOn)
{
    const StartedApplication started;
    std::vector<std::string> gone;
    const auto note = [&gone](const char* name) { return [&gone, name] { gone.push_back(name); }; };
    bool threads_lived = false;
    QObject::connect(&MessageHandler::instance(), &QObject::destroyed, note("messages"));
    QObject::connect(&ErrorHandler::instance(), &QObject::destroyed, note("handler"));
    QObject::connect(&started.manager(), &QObject::destroyed, note("manager"));
    QObject::connect(&started.manager(), &QObject::destroyed,
        [&threads_lived] { threads_lived = TestAccess::peek<ThreadLocal>() != nullptr; });
    QObject::connect(&started.application(), &QObject::destroyed, note("application"));
    QObject::connect(&QuickHelpManager::instance(), &QObject::destroyed, note("quick help"));
    pkBase::pkDestructor::run();
    EXPECT_THAT(gone, ElementsAre("quick help", "application", "manager", "handler", "messages"));
    EXPECT_TRUE(threads_lived);
}

TEST(Shutdown, ManagerMayBeDeletedDirectly)
{
    const StartedApplication started;
    bool gone = false;
    QObject::connect(&started.manager(), &QObject::destroyed, [&gone] { gone = true; });
    TestAccess::destroy<ApplicationManager>();
    EXPECT_TRUE(gone);
    EXPECT_EQ(TestAccess::peek<ApplicationManager>(), nullptr);
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_NE(TestAccess::peek<ErrorHandler>(), nullptr);
}

TEST(Shutdown, FatalErrorAfterTheManagerBringsNothingBack)
{
    const StartedApplication started;
    LogCapture log;
    TestAccess::destroy<ApplicationManager>();
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error("the end");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("Detail: the end\n"));
    EXPECT_EQ(log.text(), "FATAL ERROR!\nFurther Information: the end\n\n");
    EXPECT_EQ(TestAccess::peek<ApplicationManager>(), nullptr);
    log.take_all();
}

TEST(Shutdown, ApplicationObjectGoesWithTheManager)
{
    const StartedApplication started;
    LogCapture log;
    bool gone = false;
    QObject::connect(&started.application(), &QObject::destroyed, [&gone] { gone = true; });
    pkBase::pkDestructor::run();
    EXPECT_TRUE(gone);
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST(Shutdown, ApplicationObjectMayStillLog)
{
    const StartedApplication started;
    LogCapture log;
    QObject::connect(&started.application(), &QObject::destroyed,
        [] { ErrorProtocol::instance().log_message("last words"); });
    pkBase::pkDestructor::run();
    EXPECT_TRUE(log.take("last words"));
}

TEST(Shutdown, QtsMessagesAreQtsOwnAgain)
{
    qputenv("QT_FORCE_STDERR_LOGGING", "1");
    const StartedApplication started;
    LogCapture log;
    qCritical("inside");
    EXPECT_TRUE(log.take("QtCriticalMsg: inside"));
    pkBase::pkDestructor::run();
    testing::internal::CaptureStderr();
    qCritical("outside");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("outside"));
}

TEST(Shutdown, QtsMessagesAreQtsOwnBeforeTheApplicationObjectGoes)
{
    qputenv("QT_FORCE_STDERR_LOGGING", "1");
    const StartedApplication started;
    LogCapture log;
    QObject::connect(&started.application(), &QObject::destroyed, [] { qCritical("dying"); });
    testing::internal::CaptureStderr();
    pkBase::pkDestructor::run();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("dying"));
}

TEST(Shutdown, LockIsReleasedAfterTheApplicationObjectIsGone)
{
    const StartedApplication started;
    LogCapture log;
    const std::string file = lock_files::held_by(getpid());
    ASSERT_NE(file, "");
    EXPECT_FALSE(lock_files::is_free(file));
    bool free_before = true;
    QObject::connect(
        &started.application(), &QObject::destroyed, [&] { free_before = lock_files::is_free(file); });
    pkBase::pkDestructor::run();
    EXPECT_FALSE(free_before);
    EXPECT_TRUE(lock_files::is_free(file));
    EXPECT_EQ(lock_files::held_by(getpid()), "");
}

} // namespace
