#include "LockFiles.h"
#include "support/LogCapture.h"
#include "support/Phases.h"
#include "support/StartedApplication.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QtDebug>
#include <QtWidgets/QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <unistd.h>

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::ErrorProtocol;
using testing::HasSubstr;

TEST(Shutdown, ManagerGoesInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<ApplicationManager>());
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
