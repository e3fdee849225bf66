#include "support/LogCapture.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/testkit/LogCapture.h>
#include <tarqa/testkit/PrivateHome.h>
#include <tarqa/testkit/StartedApplication.h>

#include <QtWidgets/QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::testkit::PrivateHome;
using tarqa::housekeeping::testkit::StartedApplication;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(KitPrivateHome, IsFreshAndGoesWithItsContents)
{
    std::string scratch;
    {
        const PrivateHome home;
        scratch = PrivateHome::scratch_directory();
        EXPECT_TRUE(std::filesystem::is_directory(scratch));
        EXPECT_TRUE(std::filesystem::is_empty(scratch));
        for (const char* const variable :
            {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME", "TMPDIR"}) {
            EXPECT_TRUE(std::filesystem::is_directory(std::getenv(variable))) << variable;
            EXPECT_EQ(std::filesystem::path(std::getenv(variable)).parent_path(),
                std::filesystem::path(scratch).parent_path())
                << variable;
        }
        std::filesystem::create_directories(scratch + "/a/b");
    }
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(scratch).parent_path()));
}

TEST(KitPrivateHome, HoldsTheErrorLog)
{
    support::LogCapture log;
    ErrorProtocol::instance().log_message("an entry");
    EXPECT_EQ(std::filesystem::path(ErrorProtocol::instance().log_filename()).parent_path(),
        PrivateHome::log_directory());
    EXPECT_TRUE(log.take("an entry"));
}

TEST(KitStartedApplication, IsInitialisedAndEnds)
{
    support::LogCapture log;
    {
        const StartedApplication started(true, {"--option", "file"});
        EXPECT_EQ(&started.application(), qApp);
        EXPECT_EQ(QApplication::platformName(), "offscreen");
        EXPECT_EQ(&started.manager(), &ApplicationManager::instance());
        EXPECT_THAT(started.arguments(), ElementsAre("test", "--option", "file"));
        EXPECT_THAT(started.unannounced_log_lines(), IsEmpty());
        EXPECT_THAT(tarqa::housekeeping::testkit::unannounced_log_lines(), IsEmpty());
        EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs));
    }
    EXPECT_FALSE(QCoreApplication::instance());
    log.take_all();
}
